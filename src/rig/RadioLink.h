// A radio that delivers its own spectrum, as Start and Stop see it.
// Frequencies and modes come through RigBackend; lines come through the source named here.
#pragma once

#include <array>

#include "state/RadioState.h"
#include "state/ScaleState.h"
#include "state/SpectrumSource.h"

namespace spectrino {

class RadioLink {
 public:
  virtual ~RadioLink() = default;
  RadioLink() = default;
  RadioLink(const RadioLink&) = delete;
  RadioLink& operator=(const RadioLink&) = delete;

  /// Connects and sets the radio up for its run. False when that failed; the user has been told then.
  /// May keep events flowing while it waits, so Stop can come in between.
  virtual bool Open() = 0;
  /// Switches the radio's scope output off and closes the link, opened or not. Never waits: what still has to
  /// leave does so afterwards.
  virtual void Close() = 0;
  [[nodiscard]] virtual SpectrumSource& Source() = 0;
  /// What the level axis spans now.
  [[nodiscard]] virtual LevelScale Scale() const = 0;
  /// Distances of the frequency grid lines from the centre, Hz.
  [[nodiscard]] virtual std::array<double, 21> GridHz() const = 0;
  /// What a level of its lines is at the antenna, dBm; an estimate where levels are heights.
  [[nodiscard]] virtual float AntennaDbm(float level) const { return level; }
  /// Another way tells and sets the frequency in this run: brings what belongs to the lines alone into the
  /// state, after that way's Refresh.
  virtual void TellBeside(RadioState& /*radio*/) const {}
  /// Whether no lines are to be expected though all is well: a dialog keeps them off, the radio transmits.
  [[nodiscard]] virtual bool Paused() const { return false; }

  /// The window is being laid out anew, or is hidden from now on (true): lines may stay away meanwhile.
  virtual void BeforeLayout() {}
  virtual void AfterLayout(bool /*hidden*/) {}
};

}  // namespace spectrino
