#include "civ/ScopeWave.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "civ/HexText.h"
#include "state/BusyGuard.h"
#include "state/Val.h"

namespace spectrino {
namespace {

constexpr std::size_t kPrefixText = 6;   // 00, div, of
constexpr std::size_t kHeaderText = 30;  // the same, mode, two frequencies, out of range
constexpr double kFullScale = 160;

struct LineHeader {
  int FixedMode = 0;
  double FirstMHz = 0;   // centre or low edge
  double SecondMHz = 0;  // half span or high edge

  [[nodiscard]] double LowMHz() const { return FixedMode != 0 ? FirstMHz : FirstMHz - SecondMHz; }
  [[nodiscard]] double HighMHz() const { return FixedMode != 0 ? SecondMHz : FirstMHz + SecondMHz; }
  [[nodiscard]] double SpanMHz() const { return FixedMode != 0 ? SecondMHz - FirstMHz : 2 * SecondMHz; }
};

std::optional<LineHeader> ReadHeader(std::string_view wave) {
  if (wave.size() < kHeaderText) return std::nullopt;
  const auto mode = BcdNumber(wave.substr(6, 2));
  const std::string_view first = wave.substr(8, 10);
  const std::string_view second = wave.substr(18, 10);
  if (!mode || !FreqDigits(first) || !FreqDigits(second)) return std::nullopt;
  return LineHeader{*mode, DecodeFreq(first), DecodeFreq(second)};
}

void StoreHeader(const LineHeader& header, CivState& state, IcomPanelView& panel) {
  state.ScopeFixedMode = header.FixedMode;
  if (header.FixedMode != 0) {
    state.ScopeLowEdgeMHz = header.FirstMHz;
    state.ScopeHighEdgeMHz = header.SecondMHz;
  } else {
    state.ScopeCentreMHz = header.FirstMHz;
  }
  state.ScopeSpanMHz = header.SpanMHz();
  panel.SetFixedMode(header.FixedMode != 0);
}

/// "FIX: 175.0k": half the span, in kHz.
std::string FixedSpanText(double spanMHz) {
  const auto tenths = std::lround(std::max(0.0, std::round(spanMHz * 1e6)) / 200);
  return "FIX: " + std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + "k";
}

void ShowSpan(const LineHeader& header, CivState& state, IcomPanelView& panel) {
  constexpr std::array<std::int32_t, 10> kSpansHz{5'000,   10'000,  20'000,    50'000,    100'000,
                                                  200'000, 500'000, 1'000'000, 2'000'000, 5'000'000};
  const double shown = (header.FixedMode + 1) * header.SpanMHz();
  if (shown == state.ScopeShownSpan) return;
  const auto entry = std::ranges::find(kSpansHz, RoundToInt32(header.SpanMHz() * 1e6));
  if (entry != kSpansHz.end()) panel.SelectSpan(static_cast<int>(entry - kSpansHz.begin()));
  panel.SetSpanLabel(FixedSpanText(header.SpanMHz()));
  panel.ShowSpanList(header.FixedMode == 0);
  state.ScopeShownSpan = shown;
}

void FinishLine(CivState& state, IcomPanelView& panel) {
  const auto header = ReadHeader(state.ScopeWaveHex);
  if (!header) return;
  ShowSpan(*header, state, panel);
  for (std::size_t i = 0; i < state.ScopeGridHz.size(); ++i) {
    state.ScopeGridHz[i] = header->SpanMHz() * 1e6 / 10 * static_cast<double>(i);
  }
  const std::string_view points = std::string_view(state.ScopeWaveHex).substr(kHeaderText);
  const auto count = static_cast<std::size_t>(state.SpectrumPoints);
  if (points.size() != 2 * count) return;
  state.ScopeLevels.assign(count + 1, 0);
  for (std::size_t i = 0; i < count; ++i) {
    const double level = HexByteValue(points.substr(2 * i, 2));
    state.ScopeLevels[i + 1] = RoundToInt16(level / state.ScopeMaxLevel * kFullScale);
  }
  state.ScopeLineLowMHz = header->LowMHz();
  state.ScopeLineHighMHz = header->HighMHz();
  ++state.ScopeSerial;
}

/// True when the division fits behind what is collected, and was added to it.
bool Collect(std::string_view division, int number, int count, CivState& state, IcomPanelView& panel) {
  const std::size_t longest = kHeaderText + 2 * static_cast<std::size_t>(state.SpectrumPoints);
  if (number == 1) {
    const auto header = ReadHeader(division);
    if (!header || division.size() > longest) return false;
    state.ScopeWaveHex = division;
    StoreHeader(*header, state, panel);
    return true;
  }
  const bool follows =
      !state.ScopeWaveHex.empty() && number == state.ScopeDivision + 1 && count == state.ScopeDivisionCount;
  const std::string_view points = division.substr(kPrefixText);
  if (!follows || state.ScopeWaveHex.size() + points.size() > longest) return false;
  state.ScopeWaveHex += points;
  return true;
}

}  // namespace

void AssembleScopeWave(std::string_view division, CivState& state, IcomPanelView& panel) {
  ++state.ScopeDivisionsSeen;
  if (state.RadioId.empty() || state.ScopeMaxLevel <= 0 || state.ScopePoints <= 0) return;
  BusyGuard busy{state.ScopeWaveBusy};
  if (!busy || division.size() < kPrefixText) return;
  const auto number = BcdNumber(division.substr(2, 2));
  const auto count = BcdNumber(division.substr(4, 2));
  if (!number || !count || *number < 1 || *number > *count) return;

  const bool collected = Collect(division, *number, *count, state, panel);
  state.ScopeDivision = *number;
  state.ScopeDivisionCount = *count;
  if (collected && *number < *count) return;
  if (collected) FinishLine(state, panel);
  state.ScopeWaveHex.clear();
}

}  // namespace spectrino
