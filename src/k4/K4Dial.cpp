#include "k4/K4Dial.h"

#include <cmath>
#include <cstdio>

namespace spectrino {

void SetK4Frequency(K4Sender& sender, double freqMHz, int vfo) {
  const double hz = std::floor(freqMHz * 1e6 + 0.1);
  if (!(hz >= 0) || hz > 99'999'999'999.0) return;
  char text[24];
  std::snprintf(text, sizeof text, "%s%011lld;", vfo == 0 ? "FA" : "FB", static_cast<long long>(hz));
  sender.SendCat(text);
}

void K4Dial::Set(double freqMHz, int vfo) {
  SetK4Frequency(sender_, freqMHz, vfo);
  askAt_[vfo == 0 ? 0 : 1] = clock_.Now() + kAskAfter;
}

void K4Dial::Pump() {
  for (std::size_t vfo = 0; vfo < askAt_.size(); ++vfo) {
    if (!askAt_[vfo] || clock_.Now() < *askAt_[vfo]) continue;
    askAt_[vfo].reset();
    sender_.SendK4(vfo == 0 ? "FA;" : "FB;");
  }
}

}  // namespace spectrino
