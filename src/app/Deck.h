// The rows below the plot: bands, modes and macros, calibration, and the panels of the radios.
// Composes and wires; what a press does is decided in bands/, macros/ and the radios' rooms.
#pragma once

#include <QToolButton>
#include <QWidget>
#include <optional>

#include "app/LinkView.h"
#include "bands/BandModes.h"
#include "bands/ui/BandModePanel.h"
#include "capture/ui/CalibrationPanel.h"
#include "macros/Macros.h"
#include "macros/ui/MacroPanel.h"
#include "platform/WindowCommands.h"
#include "run/RunCycle.h"
#include "run/Session.h"
#include "settings/SettingsStore.h"

namespace spectrino {

class Deck final : public QWidget {
  Q_OBJECT
 public:
  /// All outlive it.
  struct Parts {
    Session& State;
    SettingsStore& Store;
    RunCycle& Cycle;
    const LinkView& Links;
    const RigRouter& Router;
    WindowCommands& Window;
  };
  Deck(const Parts& parts, QWidget* parent);
  /// Gives the kits' panels back.
  ~Deck() override;

  /// The rows of the chosen source, with its bands, modes and macros; after settings were loaded and when
  /// another source was chosen.
  void ShowSource();
  void ShowCalibration(bool show);
  /// Which band and mode are in use. radioMode: of the receiver that the mode buttons address.
  void ShowCurrent(int radioMode);

  /// The sliders where the settings have them.
  void LoadCalibration();

 signals:
  /// A band or a macro was pressed; before it goes to the radio.
  void Retuning();

 private:
  void Compose();
  void Connect();
  void ConnectCalibration();
  void FoldRows(bool folded);
  [[nodiscard]] Route ChosenWay() const;

  Parts parts_;
  BandModes bandModes_;
  Macros macros_;
  QToolButton* cmdFoldDeck_;
  BandModePanel* bandPanel_;
  MacroPanel* macroPanel_;
  CalibrationPanel* calibration_;
  DeckLayout layout_;
  std::optional<bool> radioSource_;  ///< as it was shown last
  bool folded_ = false;
};

}  // namespace spectrino
