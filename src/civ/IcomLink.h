// An Icom on a serial line as the source of spectrum: the lines of its scope, their place and their scale.
// Opening the line and keeping it alive is IcomSession's.
#pragma once

#include <cstdint>

#include "civ/IcomSession.h"
#include "rig/RadioLink.h"

namespace spectrino {

class IcomLink final : public RadioLink, public SpectrumSource {
 public:
  /// Both outlive it.
  IcomLink(const IcomParts& parts, IcomSession& session) : parts_(parts), session_(session) {}

  // RadioLink
  /// False only where the set-up is wrong; the user has been told then. Without its port the run goes on
  /// without lines.
  bool Open() override;
  void Close() override { session_.Close(); }
  [[nodiscard]] SpectrumSource& Source() override { return *this; }
  [[nodiscard]] LevelScale Scale() const override { return {0, 160, 160, 20, false}; }
  [[nodiscard]] std::array<double, 21> GridHz() const override { return parts_.State.ScopeGridHz; }
  /// The scope tells heights, not powers: about what half a decibel a step makes of them.
  [[nodiscard]] float AntennaDbm(float level) const override;
  [[nodiscard]] bool Paused() const override { return !session_.LinesDue(); }
  /// Keeps the scope's lines off the bus while the window is laid out anew, and parses nothing meanwhile.
  void BeforeLayout() override { session_.BeforeLayout(); }
  void AfterLayout(bool hidden) override { session_.AfterLayout(hidden); }

  // SpectrumSource
  /// Keeps the session going as well.
  PollResult Poll(const LineRequest& request, SpectrumLine& line) override;
  [[nodiscard]] std::string Failure() const override { return {}; }

 private:
  IcomParts parts_;
  IcomSession& session_;
  std::uint64_t polledSerial_ = 0;
};

}  // namespace spectrino
