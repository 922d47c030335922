#pragma once

/// While one lives, there is an autorelease pool.
class AutoreleasePool {
 public:
  AutoreleasePool();
  ~AutoreleasePool();
  AutoreleasePool(const AutoreleasePool&) = delete;
  AutoreleasePool& operator=(const AutoreleasePool&) = delete;

 private:
  void* pool_;
};
