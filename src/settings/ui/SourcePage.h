// Setup, first page: which source, which CAT software, and how the radio is reached.
// Controls and their fields; the rules between them are SetupView's.
#pragma once

#include "platform/SerialPorts.h"
#include "settings/SettingsStore.h"
#include "settings/SetupView.h"
#include "settings/ui/CatServerFrame.h"
#include "settings/ui/FreshList.h"
#include "settings/ui/HostServerFrame.h"
#include "settings/ui/IcomFrames.h"
#include "settings/ui/K4Frames.h"
#include "settings/ui/SetupFields.h"
#include "settings/ui/SetupWidgets.h"

namespace spectrino::setup {

class SourcePage final : public QWidget {
  Q_OBJECT
 public:
  /// ports, askRigs and look may be null: then there are none.
  SourcePage(SettingsStore& store, const SerialPorts* ports, AskRigList askRigs, LookForServer look,
             QWidget* parent = nullptr);

  void AddFields(SetupFields& fields);
  /// What the two lists of CAT software and kind of receiver say.
  [[nodiscard]] CatChoice Cat() const;
  void ShowCat(const CatChoice& choice);
  /// running: the CAT software stays as it is.
  void Show(const SetupView& view, bool running);
  /// Why it cannot be stored as it stands; empty when it can.
  [[nodiscard]] QString Problem() { return server_->Problem(); }

  FreshList* DevicesBox;
  QRadioButton* optbits[2];
  QComboBox* cboControl;
  QComboBox* cboSDR;
  IcomFrames* Icom;
  CatServerFrame* CatServer;

 private:
  QGroupBox* MakeDevice();
  QGroupBox* MakeFrequency();
  QGroupBox* MakeInstructions();

  QLabel* lblBits_;
  QLabel* lblSDR_;
  QLabel* lblHostEndpoint_;
  QLineEdit* txtHostEndpoint_;
  QGroupBox* fraTRXM_;
  QLabel* lblTRX_;
  K4Frames* k4_;
  HostServerFrame* server_;
};

}  // namespace spectrino::setup
