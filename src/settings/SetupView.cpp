#include "settings/SetupView.h"

#include "settings/Keys.h"

namespace spectrino {
namespace {

constexpr int kHistoryIcom = 3;
constexpr int kHistoryK4 = 5;

void ShowSource(const SetupChoice& choice, SetupView& view) {
  const bool serial = choice.Waveform == IcomData::SerialPort;
  view.SoundCard = !IsRadio(choice.Source);
  view.Icom = choice.Source == SourceKind::Icom;
  view.IcomSerial = serial;
  view.K4D = choice.Source == SourceKind::K4D;
  view.K4 = view.K4D || choice.Source == SourceKind::K4;
  view.AutoRef = view.Icom;
  view.SoftwareFree = !view.Icom || serial;
  if (view.K4) view.Instructions = "Fill in IP Address, CAT Port (9200 default), PAN Port (9201 default)";
  if (view.Icom && !serial)
    view.Instructions =
        "Configure your ICOM and Castelon for a CAT rate of 115200bds. Launch Castelon first.";
}

std::optional<int> HistoryFor(const SetupView& view) {
  if (view.SoundCard) return key::kHistoryDepth.Default;
  if (view.Icom) return kHistoryIcom;
  return view.K4 ? std::optional(kHistoryK4) : std::nullopt;
}

/// What the lists say together; what does not go together is corrected, unless the dialog is loading.
void Compose(const SetupChoice& choice, SetupChange change, SetupView& view) {
  const CatChoice cat{view.Software, choice.Cat.Sdr};
  view.Control = ComposeCatControl(cat, choice.Source, choice.Waveform);
  const CatCorrection correction = CheckCompatible(view.Control, choice.Source, choice.Waveform);
  if (change == SetupChange::Loading || correction.Message == nullptr) return;
  view.Message = correction.Message;
  view.Control = correction.Control;
  view.Software = correction.Software;
}

}  // namespace

SetupView ViewFor(const SetupChoice& choice, SetupChange change) {
  SetupView view{.Software = choice.Cat.Software};
  ShowSource(choice, view);
  const bool layout = change != SetupChange::Cat && (change != SetupChange::Waveform || view.Icom);
  // The way to the Icom's data settles the software, whatever was chosen for another source.
  if (change != SetupChange::Waveform || !layout) Compose(choice, change, view);
  if (layout) {
    if (view.Icom) view.Software = view.IcomSerial ? CatSoftware::Icom : CatSoftware::Castelon;
    Compose(choice, change, view);
    if (change != SetupChange::Loading) view.HistoryDepth = HistoryFor(view);
  }
  // A radio's own spectrum needs no offset until a CAT software is chosen beside it.
  if (!layout || view.SoundCard) view.Offsets = OffsetFrameFor(view.Control, choice.Source);
  return view;
}

const char* PriorityQuestion(SourceKind source) {
  return source == SourceKind::Icom ? "If this option is checked, Spectrino is running in background\n"
                                      "whatever the status of Castelon. This may slow down Castelon"
                                    : "If this option is checked, Spectrino takes the\n"
                                      "priority over all other applications during the capture.\n"
                                      "Other applications or the system may hang up.";
}

}  // namespace spectrino
