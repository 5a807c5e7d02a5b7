// The main window: composes the panels and wires them to the run cycle.
// No radio logic, no drawing: handlers forward, panels show.
#pragma once

#include <QElapsedTimer>
#include <QMainWindow>
#include <QTimer>
#include <QToolButton>
#include <functional>
#include <memory>
#include <string>

#include "app/Deck.h"
#include "app/IcomRig.h"
#include "app/K4Rig.h"
#include "app/TuningInput.h"
#include "display/PanDisplay.h"
#include "display/ui/HeaderPanel.h"
#include "display/ui/RangePanel.h"
#include "display/ui/ScopeWidget.h"
#include "platform/SerialPorts.h"
#include "platform/WindowCommands.h"
#include "platform/qt/QtNotifier.h"
#include "run/RunCycle.h"
#include "run/Session.h"
#include "settings/SettingsStore.h"

namespace spectrino {

class frmPan final : public QMainWindow, public WindowCommands {
  Q_OBJECT
 public:
  struct Parts {
    Session& State;
    DeviceList& Devices;
    SettingsStore& Store;
    QtNotifier& User;
    PanDisplay& Display;
    RunCycle& Cycle;
    StageTimes& Times;
    const Clock& Time;
    const SerialPorts& Ports;
    K4Rig& K4;
    IcomRig& Icom;
  };

  explicit frmPan(const Parts& parts);
  ~frmPan() override;

  /// Geometry, settings and panels; before the window is shown.
  void LoadWindow();
  /// LoadSettings: reads the store again and shows what it holds.
  void LoadSettings();
  /// Opens the setup dialog; the settings are loaded again when it closes.
  void cmdSetup_Click();
  void StartButton_Click();
  void StopButton_Click();
  void ToggleFullScreen() override;
  void AlwaysOnTop(bool on) override;
  void AllowOnTop(bool allow) override;
  /// The sources as they were last listed; a chosen device that is missing is shown as missing.
  void ShowDevices();
  /// Called whenever settings were read, before anything is opened with them.
  std::function<void(const PanSettings&)> SettingsLoaded;

 signals:
  /// The setup dialog was closed: whether its CAT control needs the bridge.
  void BridgeWanted(bool wanted);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Compose();
  void ConnectHeader();
  void ConnectStrip();
  void ConnectCalibration();
  void DevicesBox_Click(int index);
  void RunPass();
  void ScheduleFirstPass();
  void ShowRunState();
  void ShowWarning();
  void ShowHeader();
  void ShowStrip();
  void ShowScaleChange();
  void ShowRadioPanel();
  void ShowFullScreen();
  void ShowOverlays();
  void ApplyDisplayOptions();
  void FoldStrip(bool folded);
  void RangeChanged();
  void StoreRange();
  void RestoreGeometry();
  void SaveWindow();

  Parts parts_;
  std::unique_ptr<TuningInput> tuning_;
  HeaderPanel* header_;
  ScopeWidget* scope_;
  RangePanel* range_;
  Deck* deck_;
  QToolButton* cmdFold_;
  QTimer passTimer_;
  QTimer rangeTimer_;             ///< reference and range are stored once the clicks have ended
  std::optional<int> rangeBand_;  ///< the band they were changed in
  bool stripFolded_ = false;
  std::string shownWarning_;
  std::pair<int, int> shownRange_;  ///< reference and divisor that the strip tells
  std::uint64_t shownFrames_ = 0;
  QElapsedTimer sinceShown_;
  QElapsedTimer sincePanel_;
  QElapsedTimer sinceStatus_;
};

}  // namespace spectrino
