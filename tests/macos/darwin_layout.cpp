// The records of the platform as its published headers lay them out: a build of this file is
// its test, against those headers as well as against the doubles.
#include <libproc.h>
#include <mach/mach.h>
#include <sys/sysctl.h>
#include <sys/syslimits.h>

#include <cstddef>

static_assert(CTL_KERN == 1 && CTL_HW == 6);
static_assert(KERN_PROC == 14 && KERN_PROC_PID == 1 && KERN_PROCARGS2 == 49);
static_assert(HW_MEMSIZE == 24);
static_assert(ARG_MAX == 1 << 20);

static_assert(PROC_ALL_PIDS == 1);
static_assert(PROC_PIDTASKINFO == 4);
static_assert(PROC_PIDPATHINFO_MAXSIZE == 4096);
static_assert(RUSAGE_INFO_V4 == 4);
static_assert(HOST_VM_INFO64 == 4 && KERN_SUCCESS == 0);

static_assert(sizeof(kinfo_proc) == 648);
static_assert(offsetof(kinfo_proc, kp_proc.p_starttime) == 0);
static_assert(sizeof(kinfo_proc{}.kp_proc.p_starttime) == 16);
static_assert(offsetof(kinfo_proc, kp_proc.p_pid) == 40);
static_assert(offsetof(kinfo_proc, kp_proc.p_comm) == 243);
static_assert(offsetof(kinfo_proc, kp_eproc) == 296);
static_assert(offsetof(kinfo_proc, kp_eproc.e_pcred.p_ruid) == 392);
static_assert(offsetof(kinfo_proc, kp_eproc.e_ucred) == 416);
static_assert(offsetof(kinfo_proc, kp_eproc.e_ucred.cr_uid) == 420);
static_assert(sizeof(kinfo_proc{}.kp_eproc.e_ucred.cr_uid) == 4);
static_assert(offsetof(kinfo_proc, kp_eproc.e_ppid) == 560);
static_assert(offsetof(kinfo_proc, kp_eproc.e_login) == 616);

static_assert(sizeof(proc_taskinfo) == 96);
static_assert(offsetof(proc_taskinfo, pti_resident_size) == 8);

static_assert(sizeof(rusage_info_v4) == 296);
static_assert(offsetof(rusage_info_v4, ri_resident_size) == 64);
static_assert(offsetof(rusage_info_v4, ri_phys_footprint) == 72);

static_assert(sizeof(integer_t) == 4);
// Later systems have more behind these.
static_assert(sizeof(vm_statistics64_data_t) >= 152 && HOST_VM_INFO64_COUNT >= 38);
static_assert(offsetof(vm_statistics64_data_t, free_count) == 0);
static_assert(offsetof(vm_statistics64_data_t, wire_count) == 12);
static_assert(offsetof(vm_statistics64_data_t, purgeable_count) == 88);
static_assert(offsetof(vm_statistics64_data_t, speculative_count) == 92);
static_assert(offsetof(vm_statistics64_data_t, compressor_page_count) == 128);
static_assert(offsetof(vm_statistics64_data_t, internal_page_count) == 140);
static_assert(offsetof(vm_statistics64_data_t, total_uncompressed_pages_in_compressor) == 144);
