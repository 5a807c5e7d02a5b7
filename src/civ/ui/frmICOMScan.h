// The dialog of the radio's scan: what to scan, how wide, and whether to go on after a signal.
// Shows lists and forwards clicks; what is sent and kept is ScanCommands'.
#pragma once

#include <QComboBox>
#include <QDialog>
#include <functional>

#include "civ/ScanCommands.h"
#include "civ/ui/IcomPanel.h"

namespace spectrino {

class frmICOMScan final : public QDialog {
  Q_OBJECT
 public:
  explicit frmICOMScan(const ScanChoice& stored, QWidget* parent = nullptr);
  [[nodiscard]] ScanChoice Choice() const;

 signals:
  void chkScan_Click(bool checked);

 private:
  /// cboDFScan is enabled where the scan has a span.
  void cboScan_Click(int entry);

  QComboBox* cboScan_;
  QComboBox* cboDFScan_;
  QComboBox* cboRESScan_;
};

/// Shows the dialog over the window that parent() names; it deletes itself when closed.
class IcomScanWindow final : public ScanWindow {
 public:
  IcomScanWindow(std::function<QWidget*()> parent, IcomPanel& panel)
      : parent_(std::move(parent)), panel_(panel) {}
  void ShowScanDialog(ScanCommands& commands, const ScanChoice& stored) override;
  void ClearScanCheck() override { panel_.ClearScanCheck(); }

 private:
  std::function<QWidget*()> parent_;
  IcomPanel& panel_;
};

}  // namespace spectrino
