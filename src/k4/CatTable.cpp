#include "k4/CatTable.h"

#include <algorithm>
#include <array>
#include <string>

#include "k4/CatHandlers.h"
#include "state/Val.h"

namespace spectrino {

namespace {

using namespace cat;

constexpr double kVolumeSteps = 60;  // the radio's AF gain, 0..60, on a slider of 0..255

constexpr CatRange kGainRange{0, 255};
constexpr CatRange kBalanceRange{-50, 50};
constexpr CatRange kAttenuatorDb{0, 99};
constexpr CatRange kBandwidthTens{0, 2'000};
constexpr CatRange kShiftTens{0, 999};
constexpr CatRange kPitchTens{0, 99};
constexpr CatRange kNotchHz{0, 5'000};
constexpr CatRange kRitHz{-9'999, 9'999};
constexpr CatRange kMeterRange{0, 255};
constexpr CatRange kVersionRange{0, 999};

void ApplyIF(const CatReply& reply, K4State& state, K4PanelView&) {
  if (reply.Text.size() == 37) state.Record.Store("IF", reply.Text);
}

void ApplyFR(const CatReply& reply, K4State& state, K4PanelView&) {
  state.Record.Replace("IF", 31, reply.Text[2]);
}

/// The frequency is that of the last whole reply, so that a cut one changes nothing.
std::optional<double> StoredMHz(const CatReply& reply, K4State& state, std::string_view field) {
  if (reply.Text.size() == 13 && reply.Number(3, 11, kHertzRange)) state.Record.Store(field, reply.Text);
  const std::string_view stored = state.Record.Text(field);
  if (stored.size() < 13) return std::nullopt;
  return Val(stored.substr(2, 11)) / 1e6;
}

void ApplyFA(const CatReply& reply, K4State& state, K4PanelView&) {
  if (const auto mhz = StoredMHz(reply, state, "FA")) state.MainFreqMHz = state.VfoAMHz = *mhz;
}

void ApplyFB(const CatReply& reply, K4State& state, K4PanelView&) {
  if (const auto mhz = StoredMHz(reply, state, "FB")) state.SubFreqMHz = *mhz;
}

void ApplyMD(const CatReply& reply, K4State& state, K4PanelView& view) {
  if (!reply.Sub()) state.Record.Store("MD", reply.Text);
  StorePair<&K4State::RadioMode, &K4State::SubRadioMode, 3>(reply, state, view);
}

void ApplyIS(const CatReply& reply, K4State& state, K4PanelView& view) {
  state.Record.Store("IS", "IS " + std::string(reply.From(4, 3)) + "0");
  StorePair<&K4State::IfShiftMainHz, &K4State::IfShiftSubHz, 4, 4, kShiftTens, 10>(reply, state, view);
}

void ApplyBW(const CatReply& reply, K4State& state, K4PanelView& view) {
  if (reply.Text.size() > 3) state.Record.Store("BW", reply.Text);
  StorePair<&K4State::FilterBwMainHz, &K4State::FilterBwSubHz, 3, 4, kBandwidthTens, 10>(reply, state, view);
}

void ApplyCW(const CatReply& reply, K4State& state, K4PanelView&) {
  if (const auto tens = reply.Int(3, 2, kPitchTens)) state.CwPitchHz = *tens * 10;
}

void ApplySM(const CatReply& reply, K4State& state, K4PanelView&) {
  if (reply.Text[2] != 'H') {
    state.Record.Store("SM", reply.Text);
    return;
  }
  const bool sub = reply.From(4, 1) == "$";
  const auto level = reply.Int(sub ? 5 : 4, kToEnd, kMeterRange);
  if (level) (sub ? state.SMeterSub : state.SMeterMain) = *level;
}

void ApplyAG(const CatReply& reply, K4State& state, K4PanelView& view) {
  const bool sub = reply.Sub();
  if (!sub || reply.Text.size() > 3) state.Record.Store(sub ? "AG$" : "AG", reply.Text);
  const auto gain = reply.Int(sub ? 4 : 3, kToEnd, kGainRange);
  if (!gain || (sub && state.AfBalanceMode != 0)) return;
  const double level = std::clamp(*gain / kVolumeSteps * 255, 0.0, 255.0);
  view.SetVolume(sub ? 2 : 1, RoundToInt16(level));
}

void ApplyBL(const CatReply& reply, K4State& state, K4PanelView& view) {
  StoreInt<&K4State::AfBalanceMode, 3>(reply, state, view);
  StoreInt<&K4State::AfBalance, 4, 3, kBalanceRange>(reply, state, view);
  if (state.AfBalanceMode != 1) {
    view.SetVolumeToolTip("AF Sub Volume");
    return;
  }
  view.SetVolumeToolTip("Balance AF/SUB");
  view.SetVolume(2, std::clamp<int>(RoundToInt16(127.5 + state.AfBalance / 50.0 * 128), 0, 255));
}

/// The long form counts 0, 1 or 2 as off, slow, fast in another order.
void ApplyGT(const CatReply& reply, K4State& state, K4PanelView&) {
  const std::size_t size = reply.Text.size();
  const bool longForm = size == 5 || size == 6;
  if (!longForm && size != 3 && size != 4) return;
  const bool sub = reply.Sub();
  const auto digit = reply.Int((longForm ? 5U : 3U) + (sub ? 1U : 0U), 1, kDigitRange);
  if (!digit) return;
  int& agc = sub ? state.AgcSub : state.AgcMain;
  if (!longForm) {
    agc = *digit;
    return;
  }
  const int step = RoundToInt16(*digit / 2.0);
  if (step == 0) agc = 0;
  if (step == 1) agc = 2;
  if (step == 2) agc = 1;
}

void ApplyNM(const CatReply& reply, K4State& state, K4PanelView& view) {
  StorePair<&K4State::NotchPitchMain, &K4State::NotchPitchSub, 3, 4, kNotchHz>(reply, state, view);
  StorePair<&K4State::NotchManualMain, &K4State::NotchManualSub, 7>(reply, state, view);
  const int pitch = state.RxSuffix == "$" ? state.NotchPitchSub : state.NotchPitchMain;
  if (view.Notch() * 10 != pitch) view.SetNotch(pitch / 10);
}

void ApplyRO(const CatReply& reply, K4State& state, K4PanelView&) {
  if (const auto hz = reply.Int(reply.Sub() ? 4 : 3, 5, kRitHz)) state.RitOffsetHz = *hz;
}

void ApplyTQ(const CatReply& reply, K4State& state, K4PanelView&) {
  state.Transmitting = reply.Text[2] == '1' ? 1 : 0;
}

void ApplyBS(const CatReply& reply, K4State& state, K4PanelView& view) {
  StoreChecked<&K4State::BsetOn, K4Check::Bset, 3>(reply, state, view);
  state.RxSuffix = state.BsetOn == 1 ? "$" : "";
}

void ApplySB(const CatReply& reply, K4State& state, K4PanelView& view) {
  const int before = state.SubRxOn;
  if (reply.Text[2] == '0') state.SubRxOn = 0;
  if (reply.Text[2] == '1') state.SubRxOn = 1;
  Follow(view, K4Check::Sub, before, state.SubRxOn);
}

void ApplyFP(const CatReply& reply, K4State& state, K4PanelView& view) {
  const bool sub = reply.Sub();
  const std::string_view digit = reply.From(sub ? 4 : 3, 1);
  const auto number = reply.Int(sub ? 4 : 3, 1, kDigitRange);
  if (!number) return;
  state.Record.Store(sub ? "XF$" : "XF", "XF" + std::string(digit));
  int& filter = state.FilterNo[sub ? kSubRx : kMainRx];
  if (filter == *number) return;
  filter = *number;
  view.SetFilterCaption(sub ? kSubRx : kMainRx, "FIL" + std::string(digit));
}

/// Replies that keep the main and the sub receiver's text apart.
void ApplyXF(const CatReply& reply, K4State& state, K4PanelView&) {
  if (reply.Sub())
    state.Record.Store("XF$", "XF" + std::string(reply.From(4, 1)));
  else
    state.Record.Store("XF", reply.Text);
}

void ApplyNL(const CatReply& reply, K4State& state, K4PanelView&) {
  if (!reply.Sub())
    state.Record.Store("NL", reply.Text);
  else if (reply.Text.size() > 6)
    state.Record.Store("NL$", "NL" + std::string(reply.From(4, 4)));
}

void ApplyLK(const CatReply& reply, K4State& state, K4PanelView&) {
  state.Record.Store(reply.Sub() ? "LK$" : "LK", reply.Text);
}

void ApplySQ(const CatReply& reply, K4State& state, K4PanelView&) {
  state.Record.Store(reply.Sub() ? "SQ$" : "SQ", reply.Text);
}

void ApplyBN(const CatReply& reply, K4State& state, K4PanelView&) {
  if (!reply.Sub()) state.Record.Store("BN", reply.Text);
}

/// Menu replies: "ME0005.0001".
void ApplyME(const CatReply& reply, K4State& state, K4PanelView& view) {
  const std::string_view menu = reply.From(3, 4);
  const std::string_view value = reply.From(11, 1);
  if (menu == "0005") state.IsK4D = value == "1";
  if (menu == "0070") StoreInt<&K4State::K4MonitorKind, 11>(reply, state, view);
  if (menu == "0102") StoreChecked<&K4State::IirOn, K4Check::Iir, 11>(reply, state, view);
}

void ApplyRV(const CatReply& reply, K4State& state, K4PanelView&) {
  const auto version = reply.Number(4, kToEnd, kVersionRange);
  if (reply.Text[2] == 'M' && version && *version > 0) state.McuVersion = static_cast<float>(*version);
}

/// These are kept with their ";".
void RecordWhole(const CatReply& reply, K4State& state, std::string_view field) {
  state.Record.Store(field, std::string(reply.Text) + ";");
}
void ApplyAI(const CatReply& reply, K4State& state, K4PanelView&) {
  RecordWhole(reply, state, "AI");
}
void ApplyCM(const CatReply& reply, K4State& state, K4PanelView&) {
  RecordWhole(reply, state, "CM");
}
void ApplyPS(const CatReply& reply, K4State& state, K4PanelView&) {
  if (reply.Text.size() == 3 && reply.Int(3, 1, kSwitchRange)) RecordWhole(reply, state, "PS");
}
void ApplyFI(const CatReply& reply, K4State& state, K4PanelView& view) {
  StoreMHz<&K4State::PanCenterMHz, 3>(reply, state, view);
  RecordWhole(reply, state, "FI");
}
template <const char* Field>
void ApplyTrimmed(const CatReply& reply, K4State& state, K4PanelView&) {
  state.Record.Store(Field, Trim(reply.Text).substr(0, 6));
}
constexpr char kCP[] = "CP";
constexpr char kMG[] = "MG";

using S = K4State;
constexpr std::array kRows = std::to_array<CatRow>({
    {"AC", nullptr, "AC"},
    {"AG", ApplyAG, nullptr},
    {"AI", ApplyAI, nullptr},
    {"AN", StoreInt<&S::Antenna, 3>, nullptr},
    {"AP", StorePair<&S::ApfMain, &S::ApfSub, 3>, "AP"},
    {"AR", StorePair<&S::RxAntMain, &S::RxAntSub, 3>, nullptr},
    {"AT", StoreInt<&S::AtuMode, 3>, "AC"},
    {"BG", nullptr, "BG"},
    {"BL", ApplyBL, nullptr},
    {"BN", ApplyBN, nullptr},
    {"BS", ApplyBS, nullptr},
    {"BW", ApplyBW, nullptr},
    {"CM", ApplyCM, nullptr},
    {"CN", nullptr, "CN"},
    {"CP", ApplyTrimmed<kCP>, nullptr},
    {"CT", nullptr, "CT"},
    {"CW", ApplyCW, "CW"},
    {"DA", StorePair<&S::DataModeMain, &S::DataModeSub, 3>, "DT"},
    {"DB", nullptr, "DB"},
    {"DC", nullptr, "DC"},
    {"DL", nullptr, "DL"},
    {"DQ", nullptr, "DQ"},
    {"DT", StorePair<&S::DataModeMain, &S::DataModeSub, 3>, "DT"},
    {"DV", StoreChecked<&S::DiversityOn, K4Check::Div, 3, kToEnd>, nullptr},
    {"FA", ApplyFA, nullptr},
    {"FB", ApplyFB, nullptr},
    {"FC", nullptr, "FC"},
    {"FD", nullptr, "FD"},
    {"FI", ApplyFI, nullptr},
    {"FL", nullptr, "FL"},
    {"FP", ApplyFP, nullptr},
    {"FR", ApplyFR, nullptr},
    {"FS", nullptr, "FS"},
    {"FT", StoreChecked<&S::SplitOn, K4Check::Splt, 3>, "FT"},
    {"GC", nullptr, "GC"},
    {"GT", ApplyGT, "GT"},
    {"IC", nullptr, "IC"},
    {"ID", nullptr, "ID"},
    {"IF", ApplyIF, nullptr},
    {"IS", ApplyIS, nullptr},
    {"K2", nullptr, "K2"},
    {"K3", nullptr, "K3"},
    {"K4", nullptr, "K4"},
    {"KS", nullptr, "KS"},
    {"KY", nullptr, "KY"},
    {"LK", ApplyLK, nullptr},
    {"MD", ApplyMD, nullptr},
    {"ME", ApplyME, nullptr},
    {"MG", ApplyTrimmed<kMG>, nullptr},
    {"ML", nullptr, "ML"},
    {"NA", StorePair<&S::NotchAutoMain, &S::NotchAutoSub, 3>, nullptr},
    {"NB", StorePair<&S::NbMain, &S::NbSub, 3>, "NB"},
    {"NL", ApplyNL, nullptr},
    {"NM", ApplyNM, nullptr},
    {"NR", StorePair<&S::NrMain, &S::NrSub, 5>, "NR"},
    {"OF", nullptr, "OF"},
    {"OI", nullptr, "OI"},
    {"OM", nullptr, "OM"},
    {"PA", StorePair<&S::PreampMain, &S::PreampSub, 3>, "PA"},
    {"PC", nullptr, "PC"},
    {"PK", nullptr, "PK"},
    {"PS", ApplyPS, nullptr},
    {"QC", nullptr, "QC"},
    {"RA", StorePair<&S::AttMain, &S::AttSub, 3, 2, kAttenuatorDb>, "RA"},
    {"RG", nullptr, "RG"},
    {"RO", ApplyRO, nullptr},
    {"RT", StoreMainInt<&S::RitOn, 3>, nullptr},
    {"RV", ApplyRV, nullptr},
    {"SA", nullptr, "SA"},
    {"SB", ApplySB, nullptr},
    {"SD", nullptr, "SD"},
    {"SH", nullptr, "SH"},
    {"SL", nullptr, "SL"},
    {"SM", ApplySM, nullptr},
    {"SQ", ApplySQ, nullptr},
    {"ST", nullptr, "ST"},
    {"TB", nullptr, "TB"},
    {"TD", nullptr, "TD"},
    {"TM", nullptr, "TM"},
    {"TN", nullptr, "TN"},
    {"TO", nullptr, "TO"},
    {"TQ", ApplyTQ, "TQ"},
    {"TS", StoreInt<&S::TestMode, 3>, "TS"},
    {"TY", nullptr, "TY"},
    {"VT", nullptr, "VT"},
    {"VX", StoreInt<&S::VoxOn, 4>, "VX"},
    {"XF", ApplyXF, nullptr},
    {"XT", StoreMainInt<&S::XitOn, 3>, nullptr},
});
static_assert(std::ranges::is_sorted(kRows, {}, &CatRow::Mnemonic));

}  // namespace

const CatRow* FindCatRow(std::string_view mnemonic) {
  const std::span<const CatRow> rows = mnemonic.starts_with('#') ? CatPanRows() : kRows;
  const auto row = std::ranges::lower_bound(rows, mnemonic, {}, &CatRow::Mnemonic);
  return row != rows.end() && row->Mnemonic == mnemonic ? &*row : nullptr;
}

}  // namespace spectrino
