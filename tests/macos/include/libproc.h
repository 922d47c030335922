#pragma once

#include <sys/proc_info.h>
#include <sys/resource.h>
#include <sys/types.h>

#include <cstdint>

extern "C" {
int proc_listpids(uint32_t type, uint32_t typeinfo, void* buffer, int buffersize);
int proc_pidinfo(int pid, int flavor, uint64_t arg, void* buffer, int buffersize);
int proc_pidpath(int pid, void* buffer, uint32_t buffersize);
int proc_pid_rusage(int pid, int flavor, rusage_info_t* buffer);
}
