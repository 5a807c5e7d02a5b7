#include "catserver/CatServerState.h"

#include <cmath>

#include "catserver/CatModes.h"
#include "rig/Passband.h"
#include "state/FrequencyText.h"

namespace spectrino {
namespace {

constexpr double kSameHz = 0.5;
/// A radio with coarser steps goes to the next one.
constexpr double kRoundedHz = 100;
constexpr double kMostHz = 1e12;
constexpr int kMostWidthHz = 1'000'000;

/// RTTY-R and CW-R are not told by every radio.
int Plain(int radioMode) {
  if (radioMode == mode::kCwReverse) return mode::kCw;
  return radioMode == mode::kDataReverse ? mode::kData : radioMode;
}

/// Frequency and mode by VFO, split, transmit.
std::size_t SlotOf(const CatWish& wish) {
  const std::size_t sub = wish.Of == Vfo::B ? 1 : 0;
  switch (wish.What) {
    case CatWish::Kind::Frequency:
      return sub;
    case CatWish::Kind::Mode:
      return 2 + sub;
    case CatWish::Kind::Split:
      return 4;
    case CatWish::Kind::Transmit:
      break;
  }
  return 5;
}

}  // namespace

std::string CatWish::Text() const {
  const std::string vfo = Of == Vfo::B ? "VFO B to " : "";
  switch (What) {
    case Kind::Frequency:
      return "set " + vfo + FrequencyText(Hz / 1e6);
    case Kind::Mode: {
      const CatMode* named = CatModeOf(Exact);
      return "set " + vfo + (named != nullptr ? std::string(named->Word) : "the mode");
    }
    case Kind::Split:
      return On ? "set split on" : "set split off";
    case Kind::Transmit:
      return On ? "transmits" : "receives";
  }
  return {};
}

CatResult CatServerState::Ready() const {
  if (parts_.Backend() == nullptr) return CatResult::NotAvailable;
  return parts_.Heard() && parts_.Radio.MainFreqMHz > 0 ? CatResult::Done : CatResult::Silent;
}

CatResult CatServerState::Ready(Vfo vfo) const {
  const CatResult ready = Ready();
  if (ready != CatResult::Done || vfo == Vfo::A) return ready;
  if (!HasVfoB()) return CatResult::NotAvailable;
  return parts_.Radio.SubFreqMHz > 0 ? CatResult::Done : CatResult::Silent;
}

double CatServerState::FrequencyHz(Vfo vfo) const {
  const RadioState& radio = parts_.Radio;
  return std::round((vfo == Vfo::A ? radio.MainFreqMHz : radio.SubFreqMHz) * 1e6);
}

ExactMode CatServerState::ModeOf(Vfo vfo) const {
  const RadioState& radio = parts_.Radio;
  const bool main = vfo == Vfo::A || radio.SubRadioMode == mode::kUnknown;
  const int radioMode = main ? radio.RadioMode : radio.SubRadioMode;
  return {radioMode, IsData(radioMode) && (main ? radio.Teletype : radio.SubTeletype)};
}

int CatServerState::WidthHz(Vfo vfo) const {
  const Passband band = vfo == Vfo::A ? MainPassband(parts_.Radio) : SubPassband(parts_.Radio);
  return static_cast<int>(std::lround(band.HighHz - band.LowHz));
}

CatResult CatServerState::Ask(const CatWish& wish, CatPending& pending) {
  RigBackend* backend = parts_.Backend();
  if (backend == nullptr) return CatResult::NotAvailable;
  if (!parts_.Heard()) return CatResult::Silent;
  if (wish.What == CatWish::Kind::Frequency && !(wish.Hz > 0 && wish.Hz < kMostHz)) return CatResult::Invalid;
  if (wish.Of == Vfo::B && !HasVfoB()) return CatResult::NotAvailable;
  const bool asItIs = wish.What == CatWish::Kind::Split      ? wish.On == Split()
                      : wish.What == CatWish::Kind::Transmit ? wish.On == parts_.Radio.Transmitting
                                                             : false;
  const bool nothingToDo = asItIs && !wish.On;
  if (wish.What == CatWish::Kind::Transmit && !parts_.MayTransmit())
    return nothingToDo ? CatResult::Done : CatResult::Refused;
  pending = {wish, ++newest_[SlotOf(wish)], FrequencyHz(wish.Of), parts_.Time.Now()};
  // "Receive" goes out whatever was told: the radio may not have told yet that it transmits.
  if (!HandOn(*backend, wish)) return nothingToDo ? CatResult::Done : CatResult::NotAvailable;
  return Look(pending);
}

bool CatServerState::HandOn(RigBackend& backend, const CatWish& wish) {
  switch (wish.What) {
    case CatWish::Kind::Frequency:
      backend.SetFrequency(wish.Of, wish.Hz / 1e6, Aim::Dial);
      return true;
    case CatWish::Kind::Mode: {
      if (!backend.SetMode(wish.Of, wish.Exact)) return false;
      const RadioState& radio = parts_.Radio;
      const double toldHz = wish.Of == Vfo::A ? radio.MainBandwidthHz : radio.SubBandwidthHz;
      if (wish.WidthHz > 0 && wish.WidthHz < kMostWidthHz && toldHz > 0)
        backend.ChangeBandwidth(wish.Of, wish.WidthHz - static_cast<int>(std::lround(toldHz)));
      return true;
    }
    case CatWish::Kind::Split:
      return backend.SetSplit(wish.On);
    case CatWish::Kind::Transmit:
      break;
  }
  return backend.Transmit(wish.On);
}

CatResult CatServerState::Look(const CatPending& pending) const {
  if (parts_.Backend() == nullptr) return CatResult::NotAvailable;
  if (newest_[SlotOf(pending.Wish)] != pending.Number || Told(pending)) return CatResult::Done;
  return parts_.Time.Now() - pending.Since < kDeadline ? CatResult::Waiting : CatResult::Silent;
}

bool CatServerState::Told(const CatPending& pending) const {
  const CatWish& wish = pending.Wish;
  const bool graceOver = parts_.Time.Now() - pending.Since >= kGrace;
  switch (wish.What) {
    case CatWish::Kind::Frequency: {
      const double nowHz = FrequencyHz(wish.Of);
      const double awayHz = std::abs(nowHz - wish.Hz);
      return awayHz <= kSameHz || (nowHz != pending.BeforeHz && awayHz <= kRoundedHz);
    }
    case CatWish::Kind::Mode:
      return ModeTold(wish, graceOver);
    case CatWish::Kind::Split:
      // Split between equal frequencies is shown as none by some ways to a radio.
      return Split() == wish.On || (graceOver && FrequencyHz(Vfo::A) == FrequencyHz(Vfo::B));
    case CatWish::Kind::Transmit:
      break;
  }
  return parts_.Radio.Transmitting == wish.On;
}

bool CatServerState::ModeTold(const CatWish& wish, bool graceOver) const {
  const ExactMode told = ModeOf(wish.Of);
  return told == wish.Exact ||
         (graceOver && told.RadioMode == Plain(wish.Exact.RadioMode) && told.Teletype == wish.Exact.Teletype);
}

void CatServerState::StopTransmitting() {
  RigBackend* backend = parts_.Backend();
  if (backend == nullptr) return;
  ++newest_[SlotOf({.What = CatWish::Kind::Transmit})];
  static_cast<void>(backend->Transmit(false));
}

}  // namespace spectrino
