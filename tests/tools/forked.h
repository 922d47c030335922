#pragma once

#include <sys/types.h>

#include <functional>

/// Runs `work` in a forked copy of the test program, where it may change user, mounts or
/// system calls: what it returns (0 to 255), or -1 when it crashed or could not be started.
int resultOfForked(const std::function<int()>& work);

/// fork() into a process that has that pid; 0 for any. -1 where it is taken, or this process may
/// not choose.
pid_t forkAs(pid_t pid);

/// A user id that no account has.
constexpr unsigned kStranger = 54321;

/// Makes this process that user's and no group's of root; for root, and in a fork.
bool becomeStranger();

/// Gives this process mounts of its own; for root, and in a fork. False where it may not.
bool makeMountsPrivate();
