// Settings files in memory, with a switch that makes writing fail.
#pragma once

#include <map>

#include "platform/SettingsFile.h"

namespace spectrino {

class MemorySettingsFile final : public SettingsFile {
 public:
  std::optional<std::string> Read(const std::string& application, std::string&) override {
    const auto found = Files.find(application);
    return found == Files.end() ? std::nullopt : std::optional<std::string>(found->second);
  }
  WriteOutcome Update(const std::string& application,
                      const std::function<std::string(const std::string&)>& merge) override {
    if (WritesFail) return {false, "cannot write " + PathOf(application)};
    std::string& text = Files[application];
    text = merge(text);
    ++stamp_;
    return {};
  }
  std::string SetAside(const std::string& application) override {
    Files.erase(application);
    return PathOf(application) + ".corrupt";
  }
  [[nodiscard]] unsigned long long Stamp(const std::string& application) const override {
    return Files.contains(application) ? stamp_ : 0;
  }
  [[nodiscard]] std::string PathOf(const std::string& application) const override {
    return application + ".ini";
  }

  std::map<std::string, std::string> Files;
  bool WritesFail = false;

 private:
  unsigned long long stamp_ = 1;
};

}  // namespace spectrino
