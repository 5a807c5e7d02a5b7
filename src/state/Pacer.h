// How often something may happen: what comes too soon waits, and the newest takes the place of what waited.
// Counts only; the clock and what is done are the caller's.
#pragma once

#include <chrono>
#include <optional>
#include <utility>

namespace spectrino {

class Pacer {
 public:
  using Time = std::chrono::steady_clock::time_point;

  /// interval: the least time between two turns.
  explicit Pacer(std::chrono::milliseconds interval) : interval_(interval) {}

  [[nodiscard]] bool Ready(Time now) const { return !last_ || now - *last_ >= interval_; }
  /// True when a turn is due; the next interval begins with it.
  [[nodiscard]] bool Take(Time now) {
    if (!Ready(now)) return false;
    last_ = now;
    return true;
  }
  /// The interval begins anew.
  void Restart(Time now) { last_ = now; }
  /// The next turn is due at once.
  void Reset() { last_.reset(); }

 private:
  std::chrono::milliseconds interval_;
  std::optional<Time> last_;
};

/// The newest value of many, at a pace. The last one always comes out.
template <typename Value>
class PacedValue {
 public:
  explicit PacedValue(std::chrono::milliseconds interval) : pace_(interval) {}

  void Put(Value value) { waiting_ = std::move(value); }
  /// Nothing is pending any more.
  void Drop() { waiting_.reset(); }
  [[nodiscard]] bool Waits() const { return waiting_.has_value(); }
  /// The value whose time has come.
  [[nodiscard]] std::optional<Value> Due(Pacer::Time now) {
    if (!waiting_ || !pace_.Take(now)) return std::nullopt;
    return std::exchange(waiting_, std::nullopt);
  }
  /// The value, whatever the time.
  [[nodiscard]] std::optional<Value> TakeNow(Pacer::Time now) {
    if (!waiting_) return std::nullopt;
    pace_.Reset();
    return Due(now);
  }

 private:
  Pacer pace_;
  std::optional<Value> waiting_;
};

}  // namespace spectrino
