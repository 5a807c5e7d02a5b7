#include "bands/BandModes.h"

namespace spectrino {
namespace {

constexpr int kCwButton = 2;
constexpr int kFskButton = 5;
constexpr int kReverseButton = 9;

}  // namespace

DeckLayout BandModes::Layout() const {
  DeckLayout layout = parts_.Traits().Deck;
  if (layout.Bands == BandLayout::HostWhole && ReadSplit80(parts_.Store))
    layout.Bands = BandLayout::HostSplit;
  return layout;
}

void BandModes::cmdBand_Click(int index) {
  if (index < 0 || index >= kBandButtonCount) return;
  if (RigBackend* backend = parts_.Backend()) backend->SelectBand(index);
}

void BandModes::cmdMode_Click(int index) {
  const ModeLayout layout = Layout().Modes;
  const bool designed = layout == ModeLayout::Designed;
  std::optional<int> button = index;
  if (designed && index == kReverseButton) button = TurnReverse();
  PanSettings& settings = parts_.Settings;
  if (!button) return;
  const std::optional<int> local = ModeOfButton(layout, *button, settings.CwReverse, settings.FskReverse);
  if (!local) return;
  const bool reverse = designed && ((*button == kCwButton && settings.CwReverse) ||
                                    (*button == kFskButton && settings.FskReverse));
  RigBackend* backend = parts_.Backend();
  if (backend != nullptr && backend->SelectMode({*button, reverse})) return;
  if (!parts_.Traits().TakesMode) parts_.Radio.RadioMode = *local;
}

std::optional<int> BandModes::TurnReverse() {
  const int radioMode = parts_.Radio.RadioMode;
  const std::optional<int> button = ModeButtonOf(ModeLayout::Designed, radioMode);
  if (button != kCwButton && button != kFskButton) return std::nullopt;
  bool& toggle = button == kCwButton ? parts_.Settings.CwReverse : parts_.Settings.FskReverse;
  // A radio that was turned round by hand is turned back, whatever was asked for last.
  toggle = !toggle && !IsReverse(radioMode);
  return button;
}

}  // namespace spectrino
