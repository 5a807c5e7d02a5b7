#include "settings/SettingsMerge.h"

#include <algorithm>
#include <utility>

namespace spectrino {

MergeResult MergeInto(SettingsFile& file, const std::string& application,
                      std::span<const SettingValue> values) {
  MergeResult result;
  result.Application = application;
  for (const SettingValue& value : values) result.Serial = std::max(result.Serial, value.Serial);
  std::string why;
  result.Outcome = file.Update(application, [&](const std::string& onDisk) -> std::optional<std::string> {
    result.Document = IniDocument::Parse(onDisk, why);
    if (!result.Document) return std::nullopt;
    for (const SettingValue& value : values) result.Document->Set(value.Section, value.Key, value.Value);
    return result.Document->Text();
  });
  if (!result.Outcome.Ok) {
    result.Document.reset();
  } else if (!result.Document) {
    result.Outcome = {false, file.PathOf(application) + " cannot be used: " + why, false};
    result.Unparsable = std::move(why);
  }
  return result;
}

}  // namespace spectrino
