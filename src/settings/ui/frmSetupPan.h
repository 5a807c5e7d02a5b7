// The setup dialog: edits the settings store and nothing else.
// Opens no device, no port and no link; what a change means to a run is the main window's business.
#pragma once

#include <QDialog>
#include <QTabWidget>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/SerialPorts.h"
#include "settings/CatComposition.h"
#include "settings/SettingsStore.h"
#include "settings/ui/DisplayPage.h"
#include "settings/ui/SetupFields.h"
#include "settings/ui/SoundPage.h"
#include "settings/ui/SourcePage.h"
#include "settings/ui/TuningPage.h"

namespace spectrino {

struct SetupDevice {
  std::string Name;
  std::string StableId;
};

/// What the dialog needs to know of the program around it.
struct SetupWorld {
  SettingsStore& Store;
  std::function<std::vector<SetupDevice>()>
      ListInputs{};  ///< the sound inputs there are now, in device order
  const SerialPorts* Ports = nullptr;
  bool Running = false;  ///< a run is on: what it copied at Start cannot be changed now
  /// Opens a chapter of the manual; empty: its first page. What went wrong, empty when nothing did.
  std::function<std::string(const std::string& chapter)> OpenManual{};
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
  /// On every closing: whether the chosen CAT control needs the bridge.
  void BridgeWanted(bool wanted);

 public slots:
  void done(int result) override;

 private:
  void Compose();
  void ListFields();
  void ListSourceFields();
  void ListDisplayFields();
  void ListLinkFields();
  void Add(setup::SetupField field);
  void AddNumber(QLineEdit* text, const NumberKey& key);
  void AddInteger(QLineEdit* text, const IntKey& key);
  void AddText(QLineEdit* text, const TextKey& key);
  void ConnectRules();
  void ConnectColours();
  void LoadControls();
  void LoadDevice();
  void RememberDevice();
  void ShowDevice();
  void LockForRun();
  void SaveControls();
  void PutDevice(SetupBatch& batch);
  void PutQuickSplit(SetupBatch& batch);

  // Rules between the controls.
  [[nodiscard]] SourceKind Source() const;
  [[nodiscard]] IcomData WaveformData() const;
  void DevicesBox_Click();
  void ShowSourceLayout();
  void ShowSoundCardLayout();
  void ShowK4Layout(bool isK4D);
  void ShowIcomLayout();
  void ComposeCat();
  void ShowOffsetFrame(OffsetFrame frame);
  void Enable();
  void HideEmptyPages();
  void chkPriority_Click();
  void EditColour(std::size_t n);
  void SetDefaultColours(const ColourTable& colours);
  void OpenChapter(const char* chapter);

  // Serial port names.
  void ListPorts();
  void ShowPortDevice();
  void PickPortDevice(int index);

  SetupWorld world_;
  SetupSection setup_;
  QTabWidget* pages_;
  setup::SourcePage* source_;
  setup::SoundPage* sound_;
  setup::TuningPage* tuning_;
  setup::DisplayPage* display_;
  QLabel* lblLocked_;
  std::vector<SetupDevice> inputs_;
  std::vector<SerialPortEntry> ports_;
  std::vector<setup::SetupField> fields_;  ///< in the order in which they are written
  /// What is chosen, whether it is there now or not.
  struct {
    SourceKind Kind = SourceKind::SoundCard;
    SetupDevice Input{};
  } chosen_;
  bool sourceChanged_ = false;
  std::map<int, std::string> portPicks_;  ///< devices picked here, by port number
  CatControl SetupCatControl_ = CatControl::HostIf;
  bool SetupLoading_ = true;
  ColourTable SetupColors_ = kColoursK4;
};

}  // namespace spectrino
