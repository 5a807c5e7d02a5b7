#include "bands/BandModes.h"

namespace spectrino {
namespace {

constexpr int kCwButton = 2;
constexpr int kFskButton = 5;
constexpr int kReverseButton = 9;

/// Programs that tell the mode but do not take one.
constexpr bool TakesNoMode(CatControl control) {
  return control >= CatControl::BridgeIf && control <= CatControl::KetrelFixedLo;
}

}  // namespace

DeckLayout BandModes::Layout() const {
  return LayoutFor(parts_.Settings, ReadSplit80(parts_.Store));
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
  if (TakesNoMode(settings.Control)) parts_.Radio.RadioMode = *local;
}

std::optional<int> BandModes::TurnReverse() {
  const std::optional<int> button = ModeButtonOf(ModeLayout::Designed, parts_.Radio.RadioMode);
  if (button == kCwButton)
    parts_.Settings.CwReverse = !parts_.Settings.CwReverse;
  else if (button == kFskButton)
    parts_.Settings.FskReverse = !parts_.Settings.FskReverse;
  else
    return std::nullopt;
  return button;
}

}  // namespace spectrino
