#include "civ/ScopeWatch.h"

#include <algorithm>
#include <array>

namespace spectrino {
namespace {

using namespace std::chrono_literals;

constexpr std::array kPauses{2s, 2s, 4s, 8s, 15s};

}  // namespace

void ScopeWatch::Restart(Time now) {
  since_ = now;
  tries_ = 0;
}

bool ScopeWatch::Due(Time now, bool wanted, Time lineArrived) {
  if (!wanted) Restart(now);
  if (lineArrived > since_) Restart(lineArrived);
  if (now - since_ < kPauses[tries_]) return false;
  since_ = now;
  tries_ = std::min(tries_ + 1, kPauses.size() - 1);
  return true;
}

}  // namespace spectrino
