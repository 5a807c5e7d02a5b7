// The K4 as Start, Stop and the run cycle see it: a radio link and a source of lines in one.
// Reads K4State, which the session and its parsers keep fresh; waits only in Open and Close.
#pragma once

#include "k4/K4Session.h"
#include "k4/K4State.h"
#include "k4/K4Status.h"
#include "platform/Clock.h"
#include "platform/Notifier.h"
#include "rig/RadioLink.h"

namespace spectrino {

class K4Link final : public RadioLink, public SpectrumSource {
 public:
  /// All outlive the link.
  K4Link(K4State& state, K4Session& session, K4Status& status, Notifier& user, const Clock& time)
      : state_(state), session_(session), status_(status), user_(user), time_(time) {}

  bool Open() override;
  void Close() override;
  [[nodiscard]] SpectrumSource& Source() override { return *this; }
  /// Whole dB from the reference level of the newest line up; the default while none is known.
  [[nodiscard]] LevelScale Scale() const override;
  [[nodiscard]] std::array<double, 21> GridHz() const override { return state_.K4PanGridHz; }

  void TellBeside(RadioState& radio) const override;

  /// The newest line of the main panadapter; the mini-pans' go into their histories. A lost connection is
  /// silence, not a failure: the run goes on and the status text tells.
  PollResult Poll(const LineRequest& request, SpectrumLine& line) override;
  [[nodiscard]] std::string Failure() const override { return {}; }

 private:
  K4State& state_;
  K4Session& session_;
  K4Status& status_;
  Notifier& user_;
  const Clock& time_;
  std::uint64_t shownSerial_ = 0;
};

}  // namespace spectrino
