#include "sim/icom/IcomRadio.h"

#include <array>
#include <cassert>
#include <vector>

#include "sim/HashRandom.h"
#include "sim/icom/IcomSimScope.h"

namespace spectrino {

namespace {

constexpr std::uint8_t kEverybody = 0x00;
constexpr std::chrono::milliseconds kTurnTime{200};
constexpr std::int64_t kTurnHz = 20;
constexpr int kTurnsOneWay = 150;
constexpr int kTurnsPerMode = 200;

}  // namespace

IcomRadio::IcomRadio(const IcomSimSetup& setup, SimTime start)
    : model_(IcomSimModelOf(setup.Model)),
      setup_(setup),
      start_(start),
      band_(setup.BandSeed),
      control_(model_, band_),
      line_(setup.BytesPerSecond),
      nextTurnAt_(start + kTurnTime) {
  assert(setup.Divisions >= 0 && setup.Divisions <= 15 && setup.LinesPerSecond > 0);
  if (setup_.Divisions == 0) setup_.Divisions = model_.ScopeDivisions;
  line_.SetFaults(setup.Faults);
}

double IcomRadio::SecondsAt(SimTime now) const {
  return std::chrono::duration<double>(now - start_).count();
}

void IcomRadio::Receive(SimByteView bytes, SimTime now) {
  if (Faults().WrongBaud) return;
  if (setup_.Echo) line_.QueueRaw(bytes, now);
  splitter_.Take(bytes, [&](SimByteView frame) { Obey(frame, now); });
}

SimBytes IcomRadio::Execute(SimByteView command, SimTime now) {
  SimBytes reply = control_.Execute(command, SecondsAt(now));
  const bool identity = reply.size() == 3 && reply[0] == 0x19;
  if (identity && setup_.Identity != 0) reply[2] = setup_.Identity;
  return reply;
}

void IcomRadio::Obey(SimByteView frame, SimTime now) {
  const std::uint8_t to = frame[0];
  const std::uint8_t from = frame[1];
  if ((to != model_.Address && to != kEverybody) || from == model_.Address) return;
  SimBytes reply =
      Faults().Refusing && control_.State().PowerOn ? SimBytes{kCivBad} : Execute(frame.subspan(2), now);
  // What is said to everybody is answered by nobody: all radios on the bus would talk at once.
  if (reply.empty() || to == kEverybody) return;
  controller_ = from;
  line_.Queue(IcomSimLine::Kind::Reply, from, model_.Address, reply, now);
}

SimBytes IcomRadio::Transmit(SimTime now) {
  if (setup_.Operator) TurnKnob(now);
  SimBytes sent = line_.Sent(now);
  if (Faults().WrongBaud) {
    for (std::uint8_t& byte : sent) byte = static_cast<std::uint8_t>(Mix(setup_.BandSeed, ++noise_));
  }
  const bool wanted = control_.State().PowerOn && !Faults().Refusing &&
                      control_.Settings().Value({0x27, 0x10}) == 1 &&
                      control_.Settings().Value({0x27, 0x11}) == 1;
  if (!wanted) line_.DropScope();
  if (wanted && !scopeRuns_) nextLineAt_ = now;
  scopeRuns_ = wanted;
  if (wanted && now >= nextLineAt_ && !line_.ScopeWaits()) {
    QueueScopeLine(now);
    nextLineAt_ += LineTime();
    // Lines that the line could not carry are not made up for.
    if (nextLineAt_ < now) nextLineAt_ = now;
  }
  return sent;
}

std::chrono::nanoseconds IcomRadio::LineTime() const {
  constexpr std::array<double, 3> kSlower{1, 2, 5};
  const double slower = kSlower[static_cast<std::size_t>(control_.Settings().Value({0x27, 0x1A, 0x00}))];
  return std::chrono::nanoseconds(static_cast<std::int64_t>(1e9 * slower / setup_.LinesPerSecond));
}

void IcomRadio::QueueScopeLine(SimTime now) {
  const SimScopeView view = ScopeViewOf(control_);
  std::vector<double> dBm(static_cast<std::size_t>(model_.ScopePoints));
  band_.Render(static_cast<double>(view.LowHz), static_cast<double>(view.HighHz), SecondsAt(now), dBm);
  const SimBytes amplitudes = ScopeAmplitudes(dBm, view.RefDb, model_.ScopeFullScale);
  for (const SimBytes& frame : ScopeFrames(view, amplitudes, setup_.Divisions)) {
    line_.Queue(IcomSimLine::Kind::Scope, controller_, model_.Address, frame, now);
  }
}

void IcomRadio::Announce(SimByteView command, SimTime now) {
  line_.Queue(IcomSimLine::Kind::Reply, kEverybody, model_.Address, command, now);
}

/// Up for half a minute, down again, and each 40 s between SSB and CW.
void IcomRadio::TurnKnob(SimTime now) {
  if (!control_.State().PowerOn || now < nextTurnAt_) return;
  nextTurnAt_ = now + kTurnTime;
  const bool up = turns_++ / kTurnsOneWay % 2 == 0;
  if (control_.TuneTo(control_.State().Active().Hz + (up ? kTurnHz : -kTurnHz))) {
    SimBytes frequency{0x00};
    PutBcdLow(frequency, static_cast<std::uint64_t>(control_.State().Active().Hz));
    Announce(frequency, now);
  }
  if (turns_ % kTurnsPerMode != 0) return;
  control_.SwitchTo(turns_ / kTurnsPerMode % 2 == 1 ? 0x03 : 0x01);
  const SimVfo& vfo = control_.State().Active();
  Announce(SimBytes{0x01, vfo.Mode, vfo.Filter}, now);
}

}  // namespace spectrino
