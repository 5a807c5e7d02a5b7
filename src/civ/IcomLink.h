// An Icom as the source of spectrum: the lines of its scope, their place and their scale.
// Opening its link and keeping it alive is its carrier's.
#pragma once

#include <cstdint>

#include "civ/IcomCarrier.h"
#include "civ/IcomParts.h"
#include "rig/RadioLink.h"

namespace spectrino {

class IcomLink final : public RadioLink, public SpectrumSource {
 public:
  /// Both outlive it.
  IcomLink(const IcomParts& parts, IcomCarrier& carrier) : parts_(parts), carrier_(carrier) {}

  // RadioLink
  /// False only where the set-up is wrong; the user has been told then. Without its link the run goes on
  /// without lines.
  bool Open() override;
  void Close() override { carrier_.Close(); }
  [[nodiscard]] SpectrumSource& Source() override { return *this; }
  [[nodiscard]] LevelScale Scale() const override { return {0, 160, 160, 20, false}; }
  [[nodiscard]] std::array<double, 21> GridHz() const override { return parts_.State.ScopeGridHz; }
  /// The scope tells heights, not powers: about what half a decibel a step makes of them.
  [[nodiscard]] float AntennaDbm(float level) const override;
  [[nodiscard]] bool Paused() const override { return !carrier_.LinesDue(); }
  /// Keeps the scope's lines off the bus while the window is laid out anew, and parses nothing meanwhile.
  void BeforeLayout() override { carrier_.BeforeLayout(); }
  void AfterLayout(bool hidden) override { carrier_.AfterLayout(hidden); }

  // SpectrumSource
  /// Keeps the session going as well.
  PollResult Poll(const LineRequest& request, SpectrumLine& line) override;
  [[nodiscard]] std::string Failure() const override { return {}; }

 private:
  IcomParts parts_;
  IcomCarrier& carrier_;
  std::uint64_t polledSerial_ = 0;
};

}  // namespace spectrino
