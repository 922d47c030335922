#pragma once

/// While one lives, there is an autorelease pool, and the main bundle is the stage's.
class FoundationDouble {
 public:
  FoundationDouble();
  ~FoundationDouble();
  FoundationDouble(const FoundationDouble&) = delete;
  FoundationDouble& operator=(const FoundationDouble&) = delete;

 private:
  void* pool_;
};
