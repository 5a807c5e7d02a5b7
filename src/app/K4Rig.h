// Everything that a K4 needs, wired: sockets, session, parser, commands, and the panel they move.
// Ownership and wiring only.
#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <functional>

#include "k4/K4Backend.h"
#include "k4/K4Commands.h"
#include "k4/K4Link.h"
#include "k4/K4Session.h"
#include "k4/K4Status.h"
#include "k4/ui/K4Panel.h"
#include "k4/ui/frmTCPConnect.h"
#include "platform/WindowCommands.h"
#include "platform/qt/QtByteSocket.h"

namespace spectrino {

class K4Rig final : private K4SessionView, private K4PanelView {
 public:
  struct Parts {
    SettingsStore& Store;
    Notifier& User;
    EventPump& Pump;
    const Clock& Time;
    std::function<bool()> Abandoned;
    BandMemory& Bands;
    bool Unattended = false;  ///< nobody can answer a dialog
  };
  explicit K4Rig(const Parts& parts);

  /// The panel and the window are made after the rig and go before it.
  void Attach(K4Panel* panel, QWidget* window, std::function<void(bool)> allowOnTop);
  void Detach() { panel_ = nullptr; }

  [[nodiscard]] K4Link& Link() { return link_; }
  [[nodiscard]] K4Backend& Backend() { return backend_; }
  [[nodiscard]] const K4State& State() const { return state_; }
  /// Takes new mini-pan lines into their history; once per pass.
  void FollowStatus() { status_.Follow(state_); }
  /// The status area as it is now. Asks the radio again while its own dual panadapter stands in the way.
  [[nodiscard]] StatusArea Status();

 private:
  void TickMinipan() override { Set("chkMinipan", true); }
  void SelectSpanPreset(int index) override;
  void ClearBset() override { Set("chkBSET", false); }
  [[nodiscard]] bool SubTicked() const override;
  void ShowWaiting(bool waiting) override;
  void AllowAlwaysOnTop(bool allow) override;

  void SetCheck(K4Check check, bool ticked) override;
  void SetFilterCaption(int receiver, const std::string& caption) override;
  void SetVolume(int index, int value) override;
  void SetVolumeToolTip(const std::string& text) override;
  [[nodiscard]] int Notch() const override;
  void SetNotch(int value) override;
  void SetNotchToolTip(const std::string& text) override;

  void Set(const char* check, bool ticked);
  void Toggle(const QString& check, bool on);

  K4State state_;
  QtByteSocket WSCat_;
  QtByteSocket WSPan_;
  K4RetryWindow retry_;
  K4Session session_;
  K4Commands commands_;
  K4Link link_;
  K4Backend backend_;
  K4Status status_;
  QElapsedTimer sinceAsked_;
  QTimer tmrK4_;
  K4Panel* panel_ = nullptr;
  QWidget* window_ = nullptr;
  std::function<void(bool)> allowOnTop_;
};

}  // namespace spectrino
