#pragma once

#include <sys/proc.h>
#include <sys/types.h>

#include <cstddef>
#include <cstdint>

#define CTL_KERN 1
#define CTL_HW 6
#define KERN_PROC 14
#define KERN_PROCARGS2 49
#define KERN_PROC_PID 1
#define HW_MEMSIZE 24

struct vmspace {
  int32_t dummy;
  char* dummy2;
  int32_t dummy3[5];
  char* dummy4[3];
};

struct _pcred {
  char pc_lock[72];
  struct ucred* pc_ucred;
  uid_t p_ruid;
  uid_t p_svuid;
  gid_t p_rgid;
  gid_t p_svgid;
  int p_refcnt;
};

struct _ucred {
  int32_t cr_ref;
  uid_t cr_uid;
  short cr_ngroups;
  gid_t cr_groups[16];
};

struct kinfo_proc {
  struct extern_proc kp_proc;
  struct eproc {
    struct proc* e_paddr;
    struct session* e_sess;
    struct _pcred e_pcred;
    struct _ucred e_ucred;
    struct vmspace e_vm;
    pid_t e_ppid;
    pid_t e_pgid;
    short e_jobc;
    int32_t e_tdev;
    pid_t e_tpgid;
    struct session* e_tsess;
    char e_wmesg[7 + 1];
    int32_t e_xsize;
    short e_xrssize;
    short e_xccount;
    short e_xswrss;
    int32_t e_flag;
    char e_login[12];
    int32_t e_spare[4];
  } kp_eproc;
};

extern "C" int sysctl(int* name, unsigned namelen, void* oldp, size_t* oldlenp, void* newp,
                      size_t newlen);
