#include "macros/Macros.h"

#include <cassert>

#include "settings/SetupSection.h"

namespace spectrino {
namespace {

struct MacroKeys {
  TextKey Caption, Mac, Maco;
  FlagKey OnOff;
};

/// caption: what an unnamed macro is called; outlives the keys.
MacroKeys KeysOf(int n, std::string_view caption) {
  assert(n >= 0 && n < kMacroCount);
  const auto index = static_cast<std::size_t>(n);
  return {{KeyName("cap").WithIndex(index), caption},
          {KeyName("mac").WithIndex(index), ""},
          {KeyName("maco").WithIndex(index), ""},
          {KeyName("off").WithIndex(index)}};
}

std::string DefaultCaption(int n) {
  return "MAC" + std::to_string(n + 1);
}

}  // namespace

Macro Macros::Load(int n) const {
  const std::string caption = DefaultCaption(n);
  const MacroKeys keys = KeysOf(n, caption);
  const SetupSection section(parts_.Store, Section());
  return {section.Read(keys.Caption), section.Read(keys.Mac), section.Read(keys.Maco),
          section.Read(keys.OnOff)};
}

MacroSet Macros::LoadAll() const {
  MacroSet all;
  for (int n = 0; n < kMacroCount; ++n) all[static_cast<std::size_t>(n)] = Load(n);
  return all;
}

void Macros::Save(int n, const Macro& macro) {
  const std::string caption = DefaultCaption(n);
  const MacroKeys keys = KeysOf(n, caption);
  SetupSection section(parts_.Store, Section());
  SetupBatch(section)
      .Put(keys.Mac, macro.Mac)
      .Put(keys.Caption, macro.Caption)
      .Put(keys.Maco, macro.Maco)
      .Put(keys.OnOff, macro.OnOff)
      .Save();
}

void Macros::ExecuteMacro(std::string_view text) {
  if (RigBackend* backend = parts_.Backend()) backend->SendMacro(text);
}

void Macros::cmdMacro_Click(int n) {
  ExecuteMacro(Load(n).Mac);
}

void Macros::chkMacro_Click(int n, bool checked) {
  const Macro macro = Load(n);
  ExecuteMacro(checked ? macro.Mac : macro.Maco);
}

}  // namespace spectrino
