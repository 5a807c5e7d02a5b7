// Everything that an Icom on its own serial line needs, wired: port, link, commands, scan, and the panel that
// they move. Ownership and wiring only.
#pragma once

#include <QTimer>
#include <optional>

#include "civ/IcomBackend.h"
#include "civ/IcomCommands.h"
#include "civ/IcomLink.h"
#include "civ/ScanCommands.h"
#include "civ/StatusMemory.h"
#include "civ/ui/IcomPanel.h"
#include "civ/ui/frmICOMScan.h"
#include "platform/WindowCommands.h"
#include "platform/qt/QtSerialPort.h"

namespace spectrino {

class IcomRig final : private IcomPanelView {
 public:
  struct Parts {
    SettingsStore& Store;
    Notifier& User;
    EventPump& Pump;
    const Clock& Time;
    BandMemory& Bands;
  };
  explicit IcomRig(const Parts& parts);

  /// What the window brings; made after the rig, it goes before it.
  struct WindowSide {
    IcomPanel* Panel;
    QWidget* Window;
    WindowCommands* Commands;
  };
  void Attach(const WindowSide& window);
  void Detach();
  /// At the beginning and the end of a run: the first tick of one restores the band's reference level.
  void RunChanged(bool running);
  /// Setting "AutoREF".
  void SetAutoRef(bool autoRef) { autoRef_ = autoRef; }

  [[nodiscard]] IcomLink& Link() { return link_; }
  [[nodiscard]] IcomBackend& Backend() { return backend_; }
  [[nodiscard]] const CivState& State() const { return state_; }

 private:
  void SetAfSlider(int value) override;
  void SetSquelchSlider(int value) override;
  void SetRefLevelSlider(int value) override;
  void SelectSpan(int entry) override;
  void SetSpanLabel(const std::string& text) override;
  void ShowSpanList(bool list) override;
  void SetFixedMode(bool fixed) override;
  void SetFunction(int index, bool on) override;

  void ConnectPanel();
  void ConnectSlider(void (IcomPanel::*changed)(int), void (IcomCommands::*handler)(int));
  void AskPanelState();

  Parts parts_;
  CivState state_;
  QtSerialPort port_;
  IcomLink link_;
  IcomCommands commands_;
  IcomBackend backend_;
  StatusMemory memory_;
  QTimer tmrIcomStatus_;
  std::optional<IcomScanWindow> scanWindow_;
  std::optional<ScanCommands> scan_;
  WindowSide window_{};
  bool autoRef_ = true;
  int asked_ = 0;
};

}  // namespace spectrino
