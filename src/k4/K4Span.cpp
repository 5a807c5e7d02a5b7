#include "k4/K4Span.h"

#include <algorithm>
#include <string>

#include "settings/Keys.h"
#include "settings/SetupSection.h"
#include "state/RadioState.h"
#include "state/Val.h"

namespace spectrino {

namespace {

constexpr int kLeastSpanHz = 6000;
constexpr int kMostSpanHz = 368000;
constexpr int kSpanStepHz = 5000;

void SendSpan(K4Sender& sender, int spanHz) {
  sender.SendK4("#SPN" + std::to_string(spanHz));
}

}  // namespace

void StepK4Span(const K4State& state, K4Sender& sender, int direction) {
  const double next = state.PanSpanMHz * 1e6 + (direction < 0 ? -kSpanStepHz : kSpanStepHz);
  SendSpan(sender, std::clamp(RoundToInt32(next), kLeastSpanHz, kMostSpanHz));
}

void SendAutoK4Span(const K4State& state, K4Sender& sender, SettingsStore& store) {
  std::size_t preset = 0;
  if (state.RadioMode == mode::kLsb || state.RadioMode == mode::kUsb) preset = 1;
  if (state.RadioMode == mode::kFm || state.RadioMode == mode::kAm) preset = 2;
  SendSpan(sender, SetupSection(store).Read(key::kAutoSpan[preset]) * 1000);
  sender.SendK4("FC");
}

}  // namespace spectrino
