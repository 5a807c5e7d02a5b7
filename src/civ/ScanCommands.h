// The radio's own scan: what the scan dialog and the panel's scan box send, and what is kept for each model.
// Shows no window; what the scan finds is the radio's business.
#pragma once

#include <array>
#include <string_view>

#include "civ/CivSender.h"
#include "civ/CivState.h"
#include "platform/WindowCommands.h"
#include "settings/SettingsStore.h"

namespace spectrino {

struct ScanType {
  std::string_view Text;
  std::string_view Code;     ///< data of 0E, two BCD digits
  bool NeedsDeltaF = false;  ///< the span list means something
};
inline constexpr std::array<ScanType, 10> kScanTypes{{{"Programmed/memory scan", "01"},
                                                      {"Programmed scan", "02"},
                                                      {"DF Scan", "03", true},
                                                      {"Auto MW scan", "04"},
                                                      {"Fine programmed scan", "12"},
                                                      {"Fine DF scan", "13", true},
                                                      {"Memory scan", "22"},
                                                      {"Select memory scan", "23"},
                                                      {"Mode Select scan", "24"},
                                                      {"Priority scan", "42"}}};
/// Sent as A1 to A7.
inline constexpr std::array<std::string_view, 7> kDeltaFSpans{
    "+/-5kHz", "+/-10kHz", "+/-20kHz", "+/-50kHz", "+/-100kHz", "+/-500kHz", "+/-1Mhz"};
/// Sent as D0 and D3.
inline constexpr std::array<std::string_view, 2> kResumes{"Resume OFF", "Resume ON"};

/// The chosen entries of the dialog's three lists.
struct ScanChoice {
  int Scan = 0;     ///< of kScanTypes
  int DFScan = 0;   ///< of kDeltaFSpans
  int RESScan = 1;  ///< of kResumes
};

class ScanCommands;

/// What the scan asks of the windows.
class ScanWindow {
 public:
  virtual ~ScanWindow() = default;
  /// Opens frmICOMScan over the main window and returns at once. Its scan box calls chkScan_Click, its
  /// closing, however it comes about, Unload.
  virtual void ShowScanDialog(ScanCommands& commands, const ScanChoice& stored) = 0;
  /// Clears the main window's chkScan; its handler runs.
  virtual void ClearScanCheck() = 0;
};

class ScanCommands {
 public:
  /// All of it outlives this.
  struct Parts {
    CivState& State;
    CivSender& Sender;
    SettingsStore& Store;
    WindowCommands& Main;
    ScanWindow& Windows;
  };
  explicit ScanCommands(const Parts& parts) : parts_(parts) {}

  /// The main window's chkScan: opens the dialog, with the scope's data off the line meanwhile, or stops the
  /// scan. Ignored while the dialog is open.
  void MainChkScan_Click(bool checked);

  /// The dialog's chkScan: starts or stops the scan.
  void chkScan_Click(bool checked, const ScanChoice& choice);
  /// The dialog has closed. Keeps the choice for this model. With a scan running the main window's box stays
  /// checked: unchecking it stops the scan.
  void Unload(const ScanChoice& choice);

 private:
  [[nodiscard]] ScanChoice LoadChoice() const;
  void StopScan();

  Parts parts_;
};

}  // namespace spectrino
