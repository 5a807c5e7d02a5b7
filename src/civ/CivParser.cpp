#include "civ/CivParser.h"

#include <algorithm>
#include <array>

#include "civ/HexText.h"
#include "civ/IcomModels.h"
#include "civ/ScopeWave.h"
#include "state/Val.h"

namespace spectrino {
namespace {

void StoreFrequency(std::string_view data, CivState& state, IcomPanelView&) {
  if (FreqDigits(data.substr(0, 10))) state.RadioFreqMHz = DecodeFreq(data.substr(0, 10));
}

void StoreMode(std::string_view data, CivState& state, IcomPanelView&) {
  const auto modeByte = BcdNumber(data.substr(0, 2));
  if (!modeByte) return;
  // Each mode has widths of its own.
  if (state.IcomModeText != data.substr(0, 2)) state.FilterNumber = -1;
  state.IcomModeText = data.substr(0, 2);
  const IcomMode* mode = FindIcomMode(*modeByte);
  if (mode == nullptr) return;
  state.RadioModeIndex = mode->RadioModeIndex;
  if (mode->AmVariant >= 0) state.AmVariant = mode->AmVariant;
}

// Levels of 14: two BCD bytes, 0000 to 0255.
template <int CivState::*Field, void (IcomPanelView::*SetSlider)(int)>
void StoreLevel(std::string_view data, CivState& state, IcomPanelView& panel) {
  const auto level = BcdNumber(data.substr(0, 4));
  if (!level || *level > 255) return;
  state.*Field = *level;
  (panel.*SetSlider)(*level);
}

template <int CivState::*Field>
void StoreByte(std::string_view data, CivState& state, IcomPanelView&) {
  if (const auto value = BcdNumber(data.substr(0, 2))) state.*Field = *value;
}

// A function of the panel, on unless its byte is 00; an attenuator tells its decibels.
template <int Index>
void TellFunction(std::string_view data, CivState&, IcomPanelView& panel) {
  if (BcdNumber(data.substr(0, 2))) panel.SetFunction(Index, data.substr(0, 2) != "00");
}

// 1C 00 | 00 receiving or 01 transmitting
void StoreTransmitting(std::string_view data, CivState& state, IcomPanelView&) {
  if (const auto value = BcdNumber(data.substr(0, 2))) state.Transmitting = *value == 1;
}

void StoreIdentity(std::string_view data, CivState& state, IcomPanelView&) {
  const std::string_view id = data.substr(2, 2);
  state.RadioId = id;
  ++state.IdentitySerial;
  if (const IcomModel* model = FindIcomModel(id)) {
    state.IcomModelName = model->Name;
    state.ScopeMaxLevel = model->ScopeMaxLevel;
    state.SpectrumPoints = model->SpectrumPoints;
  }
  state.ScopePoints = state.SpectrumPoints;
}

void TakeWave(std::string_view data, CivState& state, IcomPanelView& panel) {
  if (data.starts_with("00")) AssembleScopeWave(data, state, panel);
}

// Half the span, as sent; the next line's header brings the whole one.
void StoreSpan(std::string_view data, CivState& state, IcomPanelView&) {
  if (FreqDigits(data.substr(0, 10))) state.ScopeSpanMHz = DecodeFreq(data.substr(0, 10));
}

// 27 19 00 | whole dB | hundredths | 00 plus or 01 minus
void StoreRefLevel(std::string_view data, CivState& state, IcomPanelView& panel) {
  const auto hundredths = BcdNumber(data.substr(0, 4));
  const auto sign = BcdNumber(data.substr(4, 2));
  if (!hundredths || !sign) return;
  const double decibels = (data[5] == '1' ? -1 : 1) * *hundredths / 100.0;
  state.ScopeRefLevel = static_cast<float>(decibels);
  panel.SetRefLevelSlider(std::clamp(RoundToInt32(2 * decibels), -40, 40));
}

// 27 1E | band range | edge number | low edge (5) | high edge (5)
void StoreEdges(std::string_view data, CivState& state, IcomPanelView&) {
  const std::string_view low = data.substr(4, 10);
  const std::string_view high = data.substr(14, 10);
  if (!FreqDigits(low) || !FreqDigits(high)) return;
  state.ScopeLowEdgeMHz = DecodeFreq(low);
  state.ScopeHighEdgeMHz = DecodeFreq(high);
}

struct CivRow {
  std::string_view Command;  ///< command, sub-command and the scope's 00 (main) where a setting has one
  std::size_t MinData;       ///< characters that must follow, FD not counted
  void (*Apply)(std::string_view data, CivState& state, IcomPanelView& panel);
};

constexpr auto kCivRows = std::to_array<CivRow>({
    {"00", 10, StoreFrequency},
    {"01", 2, StoreMode},
    {"03", 10, StoreFrequency},
    {"04", 2, StoreMode},
    {"11", 2, TellFunction<4>},
    {"1401", 4, StoreLevel<&CivState::AfLevel, &IcomPanelView::SetAfSlider>},
    {"1403", 4, StoreLevel<&CivState::SqlLevel, &IcomPanelView::SetSquelchSlider>},
    {"1602", 2, TellFunction<0>},
    {"1612", 2, StoreByte<&CivState::AgcSetting>},
    {"1622", 2, TellFunction<1>},
    {"1640", 2, TellFunction<2>},
    {"1641", 2, TellFunction<3>},
    {"1665", 2, TellFunction<5>},
    {"19", 4, StoreIdentity},
    {"1A03", 2, StoreByte<&CivState::FilterNumber>},
    {"1A07", 2, TellFunction<5>},
    {"1C00", 2, StoreTransmitting},
    {"2700", 6, TakeWave},
    {"271400", 2, StoreByte<&CivState::ScopeFixedMode>},
    {"271500", 10, StoreSpan},
    {"271900", 6, StoreRefLevel},
    {"271A00", 2, StoreByte<&CivState::ScopeSpeed>},
    {"271E", 24, StoreEdges},
});

}  // namespace

void ParseCivFrame(std::string_view frame, CivState& state, IcomPanelView& panel) {
  constexpr std::size_t kHead = 8;  // FE FE to from
  if (frame.size() < kHead + 4 || !frame.starts_with("FEFE") || !frame.ends_with("FD")) return;
  const std::string_view body = frame.substr(kHead, frame.size() - kHead - 2);
  for (const CivRow& row : kCivRows) {
    if (!body.starts_with(row.Command)) continue;
    const std::string_view data = body.substr(row.Command.size());
    if (data.size() >= row.MinData) row.Apply(data, state, panel);
    return;
  }
}

}  // namespace spectrino
