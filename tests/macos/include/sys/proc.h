#pragma once

#include <sys/time.h>
#include <sys/types.h>

#include <cstdint>

#define SIDL 1
#define SRUN 2
#define SSLEEP 3
#define SSTOP 4
#define SZOMB 5

struct extern_proc {
  union {
    struct {
      struct proc* __p_forw;
      struct proc* __p_back;
    } p_st1;
    struct timeval __p_starttime;
  } p_un;
#define p_starttime p_un.__p_starttime
  struct vmspace* p_vmspace;
  struct sigacts* p_sigacts;
  int p_flag;
  char p_stat;
  pid_t p_pid;
  pid_t p_oppid;
  int p_dupfd;
  char* user_stack;
  void* exit_thread;
  int p_debugger;
  int sigwait;
  unsigned p_estcpu;
  int p_cpticks;
  uint32_t p_pctcpu;
  void* p_wchan;
  char* p_wmesg;
  unsigned p_swtime;
  unsigned p_slptime;
  struct itimerval p_realtimer;
  struct timeval p_rtime;
  uint64_t p_uticks;
  uint64_t p_sticks;
  uint64_t p_iticks;
  int p_traceflag;
  struct vnode* p_tracep;
  int p_siglist;
  struct vnode* p_textvp;
  int p_holdcnt;
  uint32_t p_sigmask;
  uint32_t p_sigignore;
  uint32_t p_sigcatch;
  unsigned char p_priority;
  unsigned char p_usrpri;
  char p_nice;
  char p_comm[16 + 1];
  struct pgrp* p_pgrp;
  struct user* p_addr;
  unsigned short p_xstat;
  unsigned short p_acflag;
  struct rusage* p_ru;
};
