// Everything that an Icom needs, on a serial line or behind the host program, wired: link, commands, scan,
// and the panel that they move. Ownership and wiring only; the port comes in, closed.
#pragma once

#include <QTimer>
#include <memory>
#include <optional>

#include "bandplan/BandMemory.h"
#include "civ/HeldPanel.h"
#include "civ/HostIcomBackend.h"
#include "civ/HostSession.h"
#include "civ/IcomBackend.h"
#include "civ/IcomCarriers.h"
#include "civ/IcomCommands.h"
#include "civ/IcomLink.h"
#include "civ/IcomSession.h"
#include "civ/IcomSliders.h"
#include "civ/ScanCommands.h"
#include "civ/StatusMemory.h"
#include "civ/ui/IcomPanel.h"
#include "civ/ui/frmICOMScan.h"
#include "rig/RadioKit.h"

namespace spectrino {

class IcomKit final : public RadioKit {
 public:
  /// host: outlives it; null where no host program leads to the radio.
  IcomKit(const KitParts& parts, std::unique_ptr<SerialPort> port, HostIcom* host = nullptr);
  ~IcomKit() override;

  [[nodiscard]] RigBackend& Backend() override;
  [[nodiscard]] const RadioTraits& Traits() const override;
  [[nodiscard]] LinkHealth Health() const override { return carriers_.Health(); }
  [[nodiscard]] bool GoesThrough(CatWay way) const override;
  [[nodiscard]] RadioLink* Link() override { return &link_; }
  [[nodiscard]] std::span<const RadioSource> Sources() const override;
  [[nodiscard]] std::string Model() const override { return state_.IcomModelName; }
  /// The first tick of a run restores the band's reference level.
  void RunChanged(bool serving) override;
  [[nodiscard]] QWidget* Panel() override { return panel_.get(); }
  void SetWindow(WindowCommands* window) override;

 private:
  void ConnectPanel();
  void ConnectSliders();
  void Hold(PanelControl control, int value, int index = 0);
  void tmrIcomStatus_Timer();
  void AskPanelState();
  void Pump();

  KitParts parts_;
  std::unique_ptr<SerialPort> port_;
  std::unique_ptr<IcomPanel> panel_;
  CivState state_;
  BandMemory bands_;  // modes are the Icom's indices here
  HeldPanel held_;    // what the parser moves
  IcomParts icom_;
  IcomSession serial_;
  std::unique_ptr<HostSession> throughHost_;
  IcomCarriers carriers_;
  IcomLink link_;
  IcomCommands commands_;
  IcomBackend backend_;
  std::unique_ptr<HostIcomBackend> hostBackend_;
  StatusMemory memory_;
  IcomScanWindow scanWindow_;
  std::optional<ScanCommands> scan_;  ///< while there is a window for its dialog
  IcomSliders sliders_;
  QTimer tmrIcomStatus_;
  QTimer tmrPump_;  ///< while controls wait or the link closes
  int asked_ = 0;   ///< states of the panel, since the radio was set up
  int setUps_ = 0;
};

}  // namespace spectrino
