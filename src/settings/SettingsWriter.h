// Brings values into settings files on a thread of its own, so that nobody waits for a lock or a slow disk.
// Knows nothing of users: what came of the writes is fetched by whoever gave the values.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "settings/SettingsMerge.h"

namespace spectrino {

/// A write that fails is tried again four times a second. Each application has at most one set of values
/// waiting: the newest.
class SettingsWriter {
 public:
  /// resultsWait: called on the writer's thread whenever Results has something new. file outlives this.
  SettingsWriter(SettingsFile& file, std::function<void()> resultsWait);
  /// Waits for the write that is under way and gives up the rest: call Rest before.
  ~SettingsWriter();
  SettingsWriter(const SettingsWriter&) = delete;
  SettingsWriter& operator=(const SettingsWriter&) = delete;

  /// values: all that is not in the file yet, those of earlier calls as well.
  void Take(const std::string& application, std::vector<SettingValue> values);
  /// What came of the writes since the last call: each one that is done, and the first of a row of failures,
  /// which is that of 2 s where the file is merely busy. A file that cannot be parsed is not tried again.
  [[nodiscard]] std::vector<MergeResult> Results();
  /// Waits until nothing is waiting or under way. False: wait is over.
  bool Rest(std::chrono::milliseconds wait);
  /// Why the last try for this application failed; empty when none did.
  [[nodiscard]] std::string LastFailure(const std::string& application) const;

 private:
  using TimePoint = std::chrono::steady_clock::time_point;
  struct Job {
    std::vector<SettingValue> values;
    TimePoint due;
  };
  struct Trouble {
    TimePoint since;
    std::string reason;
    bool told = false;
  };

  void Run();
  std::optional<std::pair<std::string, Job>> NextJob(std::unique_lock<std::mutex>& locked);
  void Settle(const std::string& application, Job job, MergeResult result);

  SettingsFile& file_;
  std::function<void()> resultsWait_;
  mutable std::mutex mutex_;
  std::condition_variable wake_, rested_;
  std::map<std::string, Job> waiting_;
  std::map<std::string, Trouble> troubles_;
  std::vector<MergeResult> results_;
  std::atomic<bool> anyResults_ = false;  ///< spares each read of a setting the mutex
  bool busy_ = false;
  bool stop_ = false;
  std::thread thread_;
};

}  // namespace spectrino
