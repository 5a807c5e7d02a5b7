#include "settings/CatComposition.h"

#include <array>

namespace spectrino {
namespace {

struct CompositionRow {
  CatSoftware Software;
  CatControl IfAdapter, FixedLo;
};

// A value in two rows shows as the first of them.
constexpr std::array<CompositionRow, 5> kRows{{
    {CatSoftware::Castelon, CatControl::HostIf, CatControl::FixedLo},
    {CatSoftware::CastelonK3, CatControl::HostK3If, CatControl::FixedLo},
    {CatSoftware::LPBridge, CatControl::BridgeIf, CatControl::BridgeFixedLo},
    {CatSoftware::Ketrel, CatControl::KetrelIf, CatControl::KetrelFixedLo},
    {CatSoftware::Icom, CatControl::RadioDirect, CatControl::RadioDirect},
}};

constexpr bool EachSoftwareStandsAtItsPlace() {
  for (std::size_t n = 0; n < kRows.size(); ++n)
    if (kRows[n].Software != static_cast<CatSoftware>(n)) return false;
  return true;
}
static_assert(EachSoftwareStandsAtItsPlace());

/// A radio that no other program can stand in for.
bool SpeaksForItself(SourceKind source, IcomData icomData) {
  return source == SourceKind::Radio || (source == SourceKind::Icom && icomData == IcomData::SerialPort);
}

}  // namespace

CatChoice ChoiceOf(CatControl control) {
  for (const CompositionRow& row : kRows) {
    if (row.IfAdapter == control) return {row.Software, SdrKind::IfAdapter};
    if (row.FixedLo == control) return {row.Software, SdrKind::FixedLo};
  }
  return {};  // the Icom through the host program
}

CatControl ComposeCatControl(const CatChoice& choice, SourceKind source, IcomData icomData) {
  if (choice.Software == CatSoftware::Castelon && IsRadio(source)) {
    if (source != SourceKind::Icom) return CatControl::RadioDirect;
    if (icomData == IcomData::ViaHost) return CatControl::IcomViaHost;
  }
  const CompositionRow& row = kRows[static_cast<std::size_t>(choice.Software)];
  return choice.Sdr == SdrKind::FixedLo ? row.FixedLo : row.IfAdapter;
}

CatCorrection CheckCompatible(CatControl control, SourceKind source, IcomData icomData) {
  const OffsetRule offset = RowOf(control).Offset;
  const bool needsSoundCard = offset == OffsetRule::Global || offset == OffsetRule::FixedCentre;
  if (needsSoundCard && SpeaksForItself(source, icomData))
    return {"This option is not compatible", CatControl::RadioDirect, CatSoftware::Icom};
  if (control == CatControl::RadioDirect && !IsRadio(source))
    return {"CAT Control=ICOM not compatible", CatControl::HostIf, CatSoftware::Castelon};
  return {nullptr, control, CatSoftware::Castelon};
}

CatControl ControlForSource(CatControl control, SourceKind source, IcomData icomData) {
  if (SpeaksForItself(source, icomData)) return CatControl::RadioDirect;
  const CatControl composed = ComposeCatControl(ChoiceOf(control), source, icomData);
  return CheckCompatible(composed, source, icomData).Control;
}

OffsetFrame OffsetFrameFor(CatControl control, SourceKind source) {
  const CatControlRow row = RowOf(control);
  if (row.Offset == OffsetRule::Global) return OffsetFrame::GlobalOffset;
  if (row.Offset == OffsetRule::Mode && !IsRadio(source)) return OffsetFrame::ModeOffset;
  const bool hidden = row.Way == CatWay::Host && source == SourceKind::Icom;
  if (row.Offset == OffsetRule::FixedCentre && !hidden) return OffsetFrame::CenterFrequencies;
  return OffsetFrame::None;
}

}  // namespace spectrino
