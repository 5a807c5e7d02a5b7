// The main window: composes the panels and wires them to the run cycle.
// No radio logic, no drawing: handlers forward, panels show.
#pragma once

#include <QMainWindow>
#include <QTimer>
#include <QToolButton>
#include <functional>
#include <memory>

#include "adapters/qt/QtNotifier.h"
#include "app/BandPlanFile.h"
#include "app/CatServing.h"
#include "app/Deck.h"
#include "app/HostServer.h"
#include "app/KitNews.h"
#include "app/LinkView.h"
#include "app/PanView.h"
#include "app/PastInput.h"
#include "app/RangeKeeper.h"
#include "app/SourceBox.h"
#include "app/SourceChange.h"
#include "app/TuningInput.h"
#include "app/WindowStance.h"
#include "display/PanDisplay.h"
#include "display/ui/HeaderPanel.h"
#include "display/ui/RangePanel.h"
#include "display/ui/ScopeWidget.h"
#include "platform/SerialPorts.h"
#include "platform/WindowCommands.h"
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
    const RigRouter& Router;
    const HostServer& Server;
    CatServing& Cat;
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
  /// Another source; a run that is on goes over to it.
  [[nodiscard]] SourceChange& Change() { return change_; }
  void ToggleFullScreen() override { stance_->ToggleFullScreen(); }
  void AlwaysOnTop(bool on) override;
  void AllowOnTop(bool allow) override;
  /// The sources as they were last listed; a chosen device that is missing is shown as missing.
  void ShowDevices();
  /// How the links do, and a server of ours.
  void ShowLinks() { view_->ShowLinks(); }
  /// Called whenever settings were read or a source was chosen, before anything is opened with them.
  std::function<void(const PanSettings&)> SettingsChosen;

 signals:
  void FirstStepsWanted();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Compose();
  void ConnectHeader();
  void ConnectStrip();
  void ConnectPast();
  void RunPass();
  void RunningChanged();
  void ShowSettings();
  void TakeChosenWay();
  void PlaceInset(InsetPlace place);

  Parts parts_;
  KitNews kits_;
  LinkView links_;
  std::unique_ptr<TuningInput> tuning_;
  std::unique_ptr<PanView> view_;
  std::unique_ptr<PictureFile> pictures_;
  std::unique_ptr<PastInput> past_;
  RangeKeeper range_;
  SourceBox sources_;
  BandPlanFile bandPlan_;
  SourceChange change_;
  HeaderPanel* header_;
  ScopeWidget* scope_;
  RangePanel* strip_;
  Deck* deck_;
  QToolButton* cmdFold_;
  QTimer passTimer_;
  std::unique_ptr<WindowStance> stance_;
};

}  // namespace spectrino
