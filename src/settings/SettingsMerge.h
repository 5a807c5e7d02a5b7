// One write of values into a settings file, as one step on whatever stands there now.
// Keeps nothing and tells nobody.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "platform/SettingsFile.h"
#include "settings/IniDocument.h"

namespace spectrino {

struct SettingValue {
  std::string Section, Key, Value;
  std::uint64_t Serial = 0;  ///< rises with each value that is given; a value given again gets a new one
};

/// What one write came to.
struct MergeResult {
  std::string Application;
  std::uint64_t Serial = 0;  ///< the newest of the values that it was about
  WriteOutcome Outcome;
  std::optional<IniDocument> Document;  ///< what stands in the file now; nothing when it was not written
  std::string Unparsable;               ///< why the text in the file cannot be used; empty when it can
};

/// Takes as long as SettingsFile::Update.
[[nodiscard]] MergeResult MergeInto(SettingsFile& file, const std::string& application,
                                    std::span<const SettingValue> values);

}  // namespace spectrino
