#pragma once

#include <cstdint>

typedef uint64_t dispatch_time_t;
typedef void (*dispatch_function_t)(void*);
struct dispatch_queue_s {};
struct dispatch_queue_serial_s : dispatch_queue_s {};
struct dispatch_queue_main_s : dispatch_queue_serial_s {};
typedef struct dispatch_queue_s* dispatch_queue_t;
typedef struct dispatch_queue_main_s* dispatch_queue_main_t;

#define NSEC_PER_SEC 1000000000ull
#define DISPATCH_TIME_NOW (0ull)

extern "C" {
dispatch_queue_main_t dispatch_get_main_queue(void);
dispatch_time_t dispatch_time(dispatch_time_t when, int64_t delta);
void dispatch_after_f(dispatch_time_t when, dispatch_queue_t queue, void* context,
                      dispatch_function_t work);
}
