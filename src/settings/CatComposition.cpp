#include "settings/CatComposition.h"

namespace spectrino {

CatChoice ChoiceOf(CatControl control) {
  switch (control) {
    case CatControl::HostIf:
    case CatControl::IcomViaHost:
      return {CatSoftware::Castelon, SdrKind::IfAdapter};
    case CatControl::FixedLo:
      return {CatSoftware::Castelon, SdrKind::FixedLo};
    case CatControl::HostK3If:
      return {CatSoftware::CastelonK3, SdrKind::IfAdapter};
    case CatControl::BridgeIf:
      return {CatSoftware::LPBridge, SdrKind::IfAdapter};
    case CatControl::BridgeFixedLo:
      return {CatSoftware::LPBridge, SdrKind::FixedLo};
    case CatControl::KetrelIf:
      return {CatSoftware::Ketrel, SdrKind::IfAdapter};
    case CatControl::KetrelFixedLo:
      return {CatSoftware::Ketrel, SdrKind::FixedLo};
    case CatControl::RadioDirect:
      return {CatSoftware::Icom, SdrKind::IfAdapter};
  }
  return {};
}

CatControl ComposeCatControl(const CatChoice& choice, SourceKind source, IcomData icomData) {
  const bool fixedLo = choice.Sdr == SdrKind::FixedLo;
  switch (choice.Software) {
    case CatSoftware::Castelon:
      if (source == SourceKind::Icom && icomData == IcomData::ViaHost) return CatControl::IcomViaHost;
      if (source == SourceKind::K4 || source == SourceKind::K4D) return CatControl::RadioDirect;
      return fixedLo ? CatControl::FixedLo : CatControl::HostIf;
    case CatSoftware::CastelonK3:
      return fixedLo ? CatControl::FixedLo : CatControl::HostK3If;
    case CatSoftware::LPBridge:
      return fixedLo ? CatControl::BridgeFixedLo : CatControl::BridgeIf;
    case CatSoftware::Ketrel:
      return fixedLo ? CatControl::KetrelFixedLo : CatControl::KetrelIf;
    case CatSoftware::Icom:
      return CatControl::RadioDirect;
  }
  return CatControl::HostIf;
}

CatCorrection CheckCompatible(CatControl control, SourceKind source, IcomData icomData) {
  const bool needsOtherSource = control >= CatControl::FixedLo && control <= CatControl::KetrelFixedLo;
  if (needsOtherSource && source == SourceKind::Icom && icomData == IcomData::SerialPort)
    return {"This option is not compatible", CatControl::RadioDirect, CatSoftware::Icom};
  if (control == CatControl::RadioDirect && source == SourceKind::SoundCard)
    return {"CAT Control=ICOM not compatible", CatControl::HostIf, CatSoftware::Castelon};
  return {nullptr, control, CatSoftware::Castelon};
}

OffsetFrame OffsetFrameFor(CatControl control, SourceKind source) {
  switch (control) {
    case CatControl::HostIf:
      return source == SourceKind::SoundCard ? OffsetFrame::ModeOffset : OffsetFrame::None;
    case CatControl::FixedLo:
      return source != SourceKind::Icom ? OffsetFrame::CenterFrequencies : OffsetFrame::None;
    case CatControl::HostK3If:
    case CatControl::BridgeIf:
    case CatControl::KetrelIf:
      return OffsetFrame::GlobalOffset;
    case CatControl::BridgeFixedLo:
    case CatControl::KetrelFixedLo:
      return OffsetFrame::CenterFrequencies;
    case CatControl::RadioDirect:
    case CatControl::IcomViaHost:
      return OffsetFrame::None;
  }
  return OffsetFrame::None;
}

}  // namespace spectrino
