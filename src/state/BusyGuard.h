// Enters a routine that must not run inside itself, or is refused.
// Guards one thread against its own nested events; it is no lock.
#pragma once

namespace spectrino {

/// if (BusyGuard busy{state.CivSendBusy}; busy) { ... }: the nested call falls through and is dropped.
class BusyGuard {
 public:
  explicit BusyGuard(bool& flag) : flag_(flag), entered_(!flag) { flag_ = true; }
  ~BusyGuard() {
    if (entered_) flag_ = false;
  }
  BusyGuard(const BusyGuard&) = delete;
  BusyGuard& operator=(const BusyGuard&) = delete;

  explicit operator bool() const { return entered_; }

 private:
  bool& flag_;
  bool entered_;
};

}  // namespace spectrino
