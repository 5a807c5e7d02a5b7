// The nine user macros: what is stored of them, and what a press sends.
// Knows no radio's language: the text goes to the back-end in use as it was typed.
#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>

#include "rig/RadioTraits.h"
#include "rig/RigBackend.h"
#include "settings/SettingsStore.h"

namespace spectrino {

inline constexpr int kMacroCount = 9;

struct Macro {
  bool operator==(const Macro&) const = default;

  std::string Caption;
  std::string Mac;     ///< sent by the push button, or by the toggle when it is switched on
  std::string Maco;    ///< sent by the toggle when it is switched off
  bool OnOff = false;  ///< a toggle
};
using MacroSet = std::array<Macro, kMacroCount>;

/// Each section of RadioTraits::MacroSection is a set of its own. The texts may be anything, of any length;
/// they are UTF-8 and are not looked into.
class Macros {
 public:
  struct Parts {
    SettingsStore& Store;
    std::function<RigBackend*()> Backend;  ///< the one in use now; null where there is none
    std::function<RadioTraits()> Traits;   ///< of the radio that delivers the spectrum
  };
  explicit Macros(Parts parts) : parts_(std::move(parts)) {}

  /// n: 0..8, here and below. What was never stored is a push button "MAC1".."MAC9" that sends nothing.
  [[nodiscard]] Macro Load(int n) const;
  [[nodiscard]] MacroSet LoadAll() const;
  /// One write for the four keys.
  void Save(int n, const Macro& macro);

  /// Whether texts are bytes in hexadecimal.
  [[nodiscard]] bool InHex() const { return parts_.Traits().MacrosInHex; }

  /// Nothing without a back-end.
  void ExecuteMacro(std::string_view text);
  // Both read the store, so that an edit counts from the next press on.
  void cmdMacro_Click(int n);
  void chkMacro_Click(int n, bool checked);

 private:
  [[nodiscard]] std::string_view Section() const { return parts_.Traits().MacroSection; }

  Parts parts_;
};

}  // namespace spectrino
