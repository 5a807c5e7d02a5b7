#include "civ/ui/frmICOMScan.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "controls/Controls.h"

namespace spectrino {
namespace {

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

frmICOMScan::frmICOMScan(const ScanChoice& stored, QWidget* parent) : QDialog(parent) {
  setObjectName("frmICOMScan");
  setWindowTitle("SCAN [ICOM]");
  auto* rows = new QVBoxLayout(this);
  auto* form = new QFormLayout;
  rows->addLayout(form);
  const auto addList = [&](const char* name, const QString& label, const QString& toolTip) {
    auto* list = new QComboBox(this);
    Describe(*list, name, toolTip);
    form->addRow(label, list);
    return list;
  };
  cboScan_ = addList("cboScan", tr("Scan &type"), tr("Scan type"));
  for (const ScanType& type : kScanTypes) cboScan_->addItem(Text(type.Text));
  cboDFScan_ = addList("cboDFScan", tr("&Delta f"), tr("Delta f span"));
  for (const std::string_view span : kDeltaFSpans) cboDFScan_->addItem(Text(span));
  cboRESScan_ = addList("cboRESScan", tr("&Resume"), tr("Resume after a signal"));
  for (const std::string_view resume : kResumes) cboRESScan_->addItem(Text(resume));
  connect(cboScan_, &QComboBox::currentIndexChanged, this, &frmICOMScan::cboScan_Click);
  cboScan_->setCurrentIndex(stored.Scan);
  cboDFScan_->setCurrentIndex(stored.DFScan);
  cboRESScan_->setCurrentIndex(stored.RESScan);
  cboScan_Click(stored.Scan);

  auto* buttons = new QHBoxLayout;
  rows->addLayout(buttons);
  QPushButton* chkScan = MakeDialogButton("chkScan", "SCAN", tr("Starts and stops the scan"), this);
  chkScan->setCheckable(true);
  connect(chkScan, &QPushButton::toggled, this, &frmICOMScan::chkScan_Click);
  QPushButton* cmdExit = MakeDialogButton("cmdExit", tr("E&xit"), tr("Closes; a scan goes on"), this);
  connect(cmdExit, &QPushButton::clicked, this, &QDialog::accept);
  buttons->addWidget(chkScan);
  buttons->addStretch(1);
  buttons->addWidget(cmdExit);
}

ScanChoice frmICOMScan::Choice() const {
  return {cboScan_->currentIndex(), cboDFScan_->currentIndex(), cboRESScan_->currentIndex()};
}

void frmICOMScan::cboScan_Click(int entry) {
  const bool known = entry >= 0 && entry < static_cast<int>(kScanTypes.size());
  cboDFScan_->setEnabled(known && kScanTypes[static_cast<std::size_t>(entry)].NeedsDeltaF);
}

void IcomScanWindow::ShowScanDialog(ScanCommands& commands, const ScanChoice& stored) {
  auto* dialog = new frmICOMScan(stored, parent_());
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  QObject::connect(dialog, &frmICOMScan::chkScan_Click, dialog,
                   [dialog, &commands](bool checked) { commands.chkScan_Click(checked, dialog->Choice()); });
  QObject::connect(dialog, &QDialog::finished, dialog,
                   [dialog, &commands] { commands.Unload(dialog->Choice()); });
  dialog->open();
}

}  // namespace spectrino
