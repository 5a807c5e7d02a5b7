// Settings files in memory, with a switch that makes writing fail.
#pragma once

#include <atomic>
#include <map>
#include <mutex>

#include "platform/SettingsFile.h"

namespace spectrino {

class MemorySettingsFile final : public SettingsFile {
 public:
  std::optional<std::string> Read(const std::string& application, std::string&) override {
    const std::lock_guard locked(mutex_);
    const auto found = Files.find(application);
    return found == Files.end() ? std::nullopt : std::optional<std::string>(found->second);
  }
  WriteOutcome Update(const std::string& application,
                      const std::function<std::optional<std::string>(const std::string&)>& merge) override {
    const std::lock_guard locked(mutex_);
    if (WritesFail) return {false, "cannot write " + PathOf(application), false};
    std::string& text = Files[application];
    const std::optional<std::string> merged = merge(text);
    if (!merged) return {};
    text = *merged;
    ++stamp_;
    return {};
  }
  AsideOutcome SetAside(const std::string& application,
                        const std::function<bool(const std::string&)>& isBad) override {
    const std::lock_guard locked(mutex_);
    if (!isBad(Files[application])) return {AsideState::GoodNow, {}};
    Files.erase(application);
    return {AsideState::Moved, PathOf(application) + ".corrupt"};
  }
  [[nodiscard]] unsigned long long Stamp(const std::string& application) const override {
    const std::lock_guard locked(mutex_);
    return Files.contains(application) ? stamp_ : 0;
  }
  [[nodiscard]] std::string PathOf(const std::string& application) const override {
    return application + ".ini";
  }

  std::map<std::string, std::string> Files;
  std::atomic<bool> WritesFail = false;

 private:
  mutable std::mutex mutex_;
  unsigned long long stamp_ = 1;
};

}  // namespace spectrino
