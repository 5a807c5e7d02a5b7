// The setup dialog: edits the settings store and nothing else.
// Opens no device, no port and no link; what a change means to a run is the main window's business.
#pragma once

#include <QDialog>
#include <QTabWidget>
#include <functional>
#include <string>

#include "platform/SerialPorts.h"
#include "settings/SettingsStore.h"
#include "settings/SetupView.h"
#include "settings/SourceChoice.h"
#include "settings/ui/DisplayPage.h"
#include "settings/ui/SoundPage.h"
#include "settings/ui/SourcePage.h"
#include "settings/ui/TuningPage.h"

namespace spectrino {

/// What the dialog needs to know of the program around it.
struct SetupWorld {
  SettingsStore& Store;
  std::function<SourceList()> ListSources{};  ///< the sources there are now; not optional
  const SerialPorts* Ports = nullptr;
  bool Running = false;  ///< a run is on: what it copied at Start cannot be changed now
  /// Opens a chapter of the manual; empty: its first page. What went wrong, empty when nothing did.
  std::function<std::string(const std::string& chapter)> OpenManual{};
  setup::AskRigList AskRigs{};           ///< null: the list of radios stays empty
  setup::LookForServer LookForServer{};  ///< null: nothing is told of a server
  QString CatServerPlace{};              ///< where other programs find the radio now; empty: nowhere
  std::function<void(const QString& text)> ShowMessage{};  ///< titled "Spectrino"
  std::function<bool(const QString& text)> AskOkCancel{};
};

class frmSetupPan final : public QDialog {
  Q_OBJECT
 public:
  explicit frmSetupPan(SetupWorld world, QWidget* parent = nullptr);

  /// Rebuilds the list of sources and keeps what was selected in it.
  void InitDevices();
  /// Another source was chosen in the list.
  [[nodiscard]] bool SourceChanged() const { return sourceChanged_; }

 signals:
  /// On every closing: the way to the radio that was chosen, stored or not.
  void WayChosen(CatWay way);
  /// After closing without storing: the page of first steps is wanted instead.
  void FirstStepsWanted();

 public slots:
  void done(int result) override;

 private:
  void FillWorld();
  void MakePages();
  /// The next page that has something on it (+1), or the one before (-1).
  void TurnPage(int direction);
  QLayout* MakeButtons();
  void ListFields();
  void ConnectRules();
  void LoadControls();
  void LockForRun();
  void cmdOK_Click();
  void SaveControls();
  void ShowSources();
  [[nodiscard]] ChosenSource Chosen() const;
  void Apply(SetupChange change);
  void chkMouse_Click();
  void chkPriority_Click();
  void OpenChapter(const char* chapter);

  SetupWorld world_;
  SetupSection setup_;
  QTabWidget* pages_;
  setup::SourcePage* source_;
  setup::SoundPage* sound_;
  setup::TuningPage* tuning_;
  setup::DisplayPage* display_;
  QLabel* lblLocked_;
  setup::SetupFields fields_;
  SourceList sources_;
  ChosenSource chosen_;  ///< when the list was shown last
  bool sourceChanged_ = false;
  CatControl SetupCatControl_ = CatControl::HostIf;
  bool SetupLoading_ = true;
};

}  // namespace spectrino
