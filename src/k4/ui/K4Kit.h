// Everything that a K4 needs, wired: session, parser, commands, and the panel that they move.
// Ownership and wiring only; the two sockets come in, not connected.
#pragma once

#include <QTimer>
#include <memory>

#include "bandplan/BandMemory.h"
#include "k4/K4Backend.h"
#include "k4/K4Commands.h"
#include "k4/K4Link.h"
#include "k4/K4Session.h"
#include "k4/K4Status.h"
#include "k4/ui/K4Panel.h"
#include "k4/ui/frmTCPConnect.h"
#include "rig/RadioKit.h"
#include "state/Pacer.h"

namespace spectrino {

class K4Kit final : public RadioKit, private K4SessionView {
 public:
  K4Kit(const KitParts& parts, std::unique_ptr<ByteSocket> cat, std::unique_ptr<ByteSocket> pan);
  ~K4Kit() override;

  [[nodiscard]] RigBackend& Backend() override { return backend_; }
  [[nodiscard]] const RadioTraits& Traits() const override;
  [[nodiscard]] LinkHealth Health() const override { return session_.Health(); }
  [[nodiscard]] LinkHealth CommandHealth() const override { return session_.CatHealth(); }
  [[nodiscard]] RadioLink* Link() override { return &link_; }
  [[nodiscard]] std::span<const RadioSource> Sources() const override;
  [[nodiscard]] int AddressedMode(const RadioState& radio) const override;
  [[nodiscard]] QWidget* Panel() override { return panel_.get(); }
  void SetWindow(WindowCommands* window) override { window_ = window; }
  void ShowPanel() override { panel_->Show(state_); }
  /// Asks the radio again while its own dual panadapter stands in the way.
  [[nodiscard]] StatusArea Status() override;

 private:
  void TickMinipan() override { panel_->SetNamedCheck("chkMinipan", true); }
  void SelectSpanPreset(int index) override { panel_->SelectSpanPreset(index); }
  void ClearBset() override { panel_->SetCheck(K4Check::Bset, false); }
  [[nodiscard]] bool SubTicked() const override { return panel_->SubTicked(); }
  void ShowWaiting(bool waiting) override;
  void AllowAlwaysOnTop(bool allow) override;

  void ConnectPanel();
  void Toggle(const QString& check, bool on);

  const Clock& time_;
  std::unique_ptr<ByteSocket> WSCat_;
  std::unique_ptr<ByteSocket> WSPan_;
  std::unique_ptr<K4Panel> panel_;
  WindowCommands* window_ = nullptr;
  K4State state_;
  BandMemory bands_;  // modes are the K4's codes here
  K4RetryWindow retry_;
  K4Session session_;
  K4Dial dial_;
  K4Commands commands_;
  K4Status status_;
  K4Link link_;
  K4Backend backend_;
  Pacer askAgain_;
  QTimer tmrK4_;
};

}  // namespace spectrino
