// The replies of the panadapter: each begins with "#".
#include <algorithm>
#include <array>

#include "k4/CatHandlers.h"
#include "state/Val.h"

namespace spectrino {

namespace {

using namespace cat;

void ApplyFNL(const CatReply& reply, K4State& state, K4PanelView&) {
  const std::string_view index = reply.From(5, 1);
  if (index.empty() || index[0] < '0' || index[0] > '9') return;
  state.FixedTuneNames[static_cast<std::size_t>(index[0] - '0')] = Trim(reply.From(6, 9));
}

constexpr CatRange kTwoDigits{0, 99};
constexpr CatRange kThreeDigits{0, 999};
constexpr CatRange kRvm{-9'999, 99'999};
// Wider than any that a K4 has.
constexpr CatRange kReferenceDb{-300, 300};
constexpr CatRange kScaleDb{1, 300};
constexpr CatRange kSpanHz{1'000, 1'000'000};

using S = K4State;
constexpr std::array kRows = std::to_array<CatRow>({
    {"#AVG", StoreInt<&S::PanAverage, 5, 2, kTwoDigits>, nullptr},
    {"#CTF", StoreMHz<&S::PanCenterMHz, 6, 11>, nullptr},
    {"#DPM", StoreInt<&S::PanDpm, 5>, nullptr},
    {"#DSM", StoreInt<&S::PanDsm, 5>, nullptr},
    {"#FNL", ApplyFNL, nullptr},
    {"#FXA", StoreInt<&S::PanFxa, 5>, nullptr},
    {"#FXT", StoreChecked<&S::FxtOn, K4Check::Fxt, 5>, nullptr},
    {"#HDPM", StoreInt<&S::PanHdpm, 6>, nullptr},
    {"#LBL", StoreInt<&S::PanLabels, 5>, nullptr},
    {"#MFA", StoreMHz<&S::MarkerAMHz, 6, 11>, nullptr},
    {"#MFB", StoreMHz<&S::MarkerBMHz, 6, 11>, nullptr},
    {"#MKA", StoreInt<&S::MarkerAOn, 5>, nullptr},
    {"#MKB", StoreInt<&S::MarkerBOn, 5>, nullptr},
    {"#MP$", StoreInt<&S::PanMpSub, 5>, nullptr},
    {"#NB", StoreInt<&S::PanNb, 4>, nullptr},
    {"#NBL", StoreInt<&S::PanNbLevel, 5, 2, kTwoDigits>, nullptr},
    {"#PKM", StoreInt<&S::PanPeakMode, 5>, nullptr},
    {"#REF", StoreInt<&S::PanRefLevelDb, 5, 4, kReferenceDb>, nullptr},
    {"#RVM", StoreInt<&S::PanRvm, 5, 5, kRvm>, nullptr},
    {"#SCL", StoreInt<&S::PanScaleDb, 5, 3, kScaleDb>, nullptr},
    {"#SPM", StoreInt<&S::PanSpeedMode, 5>, nullptr},
    {"#SPN", StoreMHz<&S::PanSpanMHz, 5, kToEnd, kSpanHz>, nullptr},
    {"#VFA", StoreInt<&S::PanVfoAMarker, 5>, nullptr},
    {"#VFB", StoreInt<&S::PanVfoBMarker, 5>, nullptr},
    {"#WBS", StoreInt<&S::WaterfallBs, 5, 2, kTwoDigits>, nullptr},
    {"#WFA", StoreInt<&S::WaterfallA, 5>, nullptr},
    {"#WFC", StoreInt<&S::WaterfallC, 5>, nullptr},
    {"#WFH", StoreInt<&S::WaterfallHeight, 5, 3, kThreeDigits>, nullptr},
    {"#WFM", StoreInt<&S::WaterfallM, 5>, nullptr},
});
static_assert(std::ranges::is_sorted(kRows, {}, &CatRow::Mnemonic));

}  // namespace

std::span<const CatRow> CatPanRows() {
  return kRows;
}

}  // namespace spectrino
