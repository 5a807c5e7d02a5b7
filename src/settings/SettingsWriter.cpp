#include "settings/SettingsWriter.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace spectrino {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds kBetweenTries{250};
/// Programs that meet at a file are done within milliseconds; who holds it longer is worth a word.
constexpr milliseconds kPatience{2000};

}  // namespace

SettingsWriter::SettingsWriter(SettingsFile& file, std::function<void()> resultsWait)
    : file_(file), resultsWait_(std::move(resultsWait)) {
  try {
    thread_ = std::thread([this] { Run(); });
  } catch (const std::system_error&) {
    // A machine without room for a thread: Take writes by itself.
  }
}

SettingsWriter::~SettingsWriter() {
  {
    const std::lock_guard locked(mutex_);
    stop_ = true;
  }
  wake_.notify_all();
  if (thread_.joinable()) thread_.join();
}

void SettingsWriter::Take(const std::string& application, std::vector<SettingValue> values) {
  std::unique_lock locked(mutex_);
  const auto [at, isNew] = waiting_.try_emplace(application, Job{.values = {}, .due = steady_clock::now()});
  at->second.values = std::move(values);
  // Something that just failed is not tried faster because more has come.
  if (isNew && troubles_.contains(application)) at->second.due += kBetweenTries;
  if (!thread_.joinable()) {
    Job job = std::move(waiting_.extract(at).mapped());
    locked.unlock();
    MergeResult result = MergeInto(file_, application, job.values);
    locked.lock();
    Settle(application, std::move(job), std::move(result));
  }
  wake_.notify_all();
}

std::vector<MergeResult> SettingsWriter::Results() {
  if (!anyResults_.exchange(false)) return {};
  const std::lock_guard locked(mutex_);
  return std::exchange(results_, {});
}

bool SettingsWriter::Rest(milliseconds wait) {
  std::unique_lock locked(mutex_);
  for (auto& [application, job] : waiting_) job.due = {};
  wake_.notify_all();
  return rested_.wait_for(locked, wait, [this] { return waiting_.empty() && !busy_; });
}

std::string SettingsWriter::LastFailure(const std::string& application) const {
  const std::lock_guard locked(mutex_);
  const auto trouble = troubles_.find(application);
  return trouble == troubles_.end() ? std::string() : trouble->second.reason;
}

void SettingsWriter::Run() {
  std::unique_lock locked(mutex_);
  while (auto job = NextJob(locked)) {
    busy_ = true;
    locked.unlock();
    MergeResult result = MergeInto(file_, job->first, job->second.values);
    locked.lock();
    busy_ = false;
    Settle(job->first, std::move(job->second), std::move(result));
    if (anyResults_ && resultsWait_) {
      locked.unlock();
      resultsWait_();
      locked.lock();
    }
    if (waiting_.empty()) rested_.notify_all();
  }
}

/// Waits for the next one that is due; nothing: the writer is to end.
std::optional<std::pair<std::string, SettingsWriter::Job>> SettingsWriter::NextJob(
    std::unique_lock<std::mutex>& locked) {
  while (!stop_) {
    const auto next =
        std::ranges::min_element(waiting_, {}, [](const auto& waiting) { return waiting.second.due; });
    if (next == waiting_.end()) {
      wake_.wait(locked);
    } else if (const TimePoint due = next->second.due; due > steady_clock::now()) {
      wake_.wait_until(locked, due);
    } else {
      auto taken = waiting_.extract(next);
      return std::pair(std::move(taken.key()), std::move(taken.mapped()));
    }
  }
  return std::nullopt;
}

void SettingsWriter::Settle(const std::string& application, Job job, MergeResult result) {
  const auto now = steady_clock::now();
  if (result.Outcome.Ok) {
    troubles_.erase(application);
  } else {
    Trouble& trouble = troubles_.try_emplace(application, Trouble{now, {}}).first->second;
    trouble.reason = result.Outcome.Reason;
    if (result.Unparsable.empty()) {
      job.due = now + kBetweenTries;
      waiting_.try_emplace(application, std::move(job));  // unless newer values have come
      const bool soonDone = result.Outcome.Busy && now - trouble.since < kPatience;
      if (soonDone || std::exchange(trouble.told, true)) return;
    }
  }
  results_.push_back(std::move(result));
  anyResults_ = true;
}

}  // namespace spectrino
