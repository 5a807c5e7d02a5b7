#include "app/RangeKeeper.h"

#include "bandplan/Bands.h"
#include "settings/SetupSection.h"

namespace spectrino {
namespace {
constexpr int kRestMs = 700;
}

RangeKeeper::RangeKeeper(const Session& session, SettingsStore& store) : session_(session), store_(store) {
  timer_.setSingleShot(true);
  timer_.setInterval(kRestMs);
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Store(); });
}

std::optional<int> CurrentRefBand(const Session& session) {
  const double mhz = session.Radio.MainFreqMHz;
  return mhz != 0 ? RefBand(mhz) : std::nullopt;
}

void RangeKeeper::Changed() {
  const std::optional<int> band = CurrentRefBand(session_);
  if (band != band_) StoreWaiting();
  band_ = band;
  timer_.start();
}

void RangeKeeper::StoreWaiting() {
  if (timer_.isActive()) Store();
}

void RangeKeeper::Store() {
  timer_.stop();
  SetupSection setup(store_);
  SaveRange(setup, session_.Settings, band_);
}

}  // namespace spectrino
