#include "macros/ui/frmRemFunction.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "controls/Controls.h"

namespace spectrino {
namespace {

constexpr int kCommandWidth = 320;

}  // namespace

frmRemFunction::frmRemFunction(int n, const Macro& stored, bool inHex, QWidget* parent) : QDialog(parent) {
  setObjectName("frmRemFunction");
  setWindowTitle(tr("Macro %1").arg(n + 1));
  new QVBoxLayout(this);
  AddFields(inHex);
  AddButtons();
  txtCaption_->setText(QString::fromStdString(stored.Caption));
  txtMacro_->setText(QString::fromStdString(stored.Mac));
  txtOff_->setText(QString::fromStdString(stored.Maco));
  chkOnOff_->setChecked(stored.OnOff);
  chkOnOff_Click(stored.OnOff);
  connect(chkOnOff_, &QCheckBox::toggled, this, &frmRemFunction::chkOnOff_Click);
}

QLineEdit* frmRemFunction::AddLine(const char* name, const QString& accessibleName) {
  auto* line = new QLineEdit(this);
  line->setObjectName(name);
  line->setAccessibleName(accessibleName);
  line->setMinimumWidth(kCommandWidth);
  return line;
}

void frmRemFunction::AddFields(bool inHex) {
  auto* form = new QFormLayout;
  txtCaption_ = AddLine("txtCaption", tr("Caption of the button"));
  form->addRow("&CAPTION", txtCaption_);
  txtMacro_ = AddLine("txtMacro", tr("Command of the button, or when switched on"));
  form->addRow("&MACRO", txtMacro_);
  chkOnOff_ = new QCheckBox("O&FF :", this);
  Describe(*chkOnOff_, "chkOnOff", tr("The button switches on and off"));
  txtOff_ = AddLine("txtOff", tr("Command when switched off"));
  form->addRow(chkOnOff_, txtOff_);
  auto* lblIcom = new QLabel("Format: Cn SC Data (ex PREAMP ON=160201)", this);
  lblIcom->setObjectName("lblIcom");
  form->addRow(lblIcom);
  lblIcom->setVisible(inHex);
  static_cast<QVBoxLayout*>(layout())->addLayout(form);
}

void frmRemFunction::AddButtons() {
  auto* row = new QHBoxLayout;
  cmdTest_ = MakeDialogButton("cmdTest", tr("&Test"), tr("Sends the command"), this);
  connect(cmdTest_, &QPushButton::clicked, this, [this] { emit ExecuteMacro(Edited().Mac); });
  chkTest_ = MakeDialogButton("chkTest", tr("&Test"), tr("Sends one command, then the other"), this);
  chkTest_->setCheckable(true);
  connect(chkTest_, &QPushButton::clicked, this, &frmRemFunction::chkTest_Click);
  QPushButton* cmdClear = MakeDialogButton("cmdClear", tr("C&lear"), tr("Empties the macro"), this);
  connect(cmdClear, &QPushButton::clicked, this, &frmRemFunction::cmdClear_Click);
  QPushButton* cmdOK = MakeDialogButton("cmdOK", tr("&OK"), tr("Saves the macro and closes"), this);
  cmdOK->setDefault(true);
  connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
  QPushButton* cmdCancel = MakeDialogButton("cmdCancel", tr("Ca&ncel"), tr("Closes without saving"), this);
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  for (QPushButton* button : {cmdTest_, chkTest_, cmdClear}) row->addWidget(button);
  row->addStretch(1);
  row->addWidget(cmdOK);
  row->addWidget(cmdCancel);
  static_cast<QVBoxLayout*>(layout())->addLayout(row);
}

Macro frmRemFunction::Edited() const {
  return {txtCaption_->text().toStdString(), txtMacro_->text().toStdString(), txtOff_->text().toStdString(),
          chkOnOff_->isChecked()};
}

void frmRemFunction::chkOnOff_Click(bool checked) {
  txtOff_->setEnabled(checked);
  chkTest_->setVisible(checked);
  cmdTest_->setVisible(!checked);
}

void frmRemFunction::cmdClear_Click() {
  txtMacro_->clear();
  txtOff_->clear();
  chkOnOff_->setChecked(true);
  txtCaption_->setText("-");
}

void frmRemFunction::chkTest_Click(bool checked) {
  const Macro macro = Edited();
  emit ExecuteMacro(checked ? macro.Mac : macro.Maco);
}

void ShowMacroEditor(Macros& macros, int n, MacroPanel& panel, QWidget* window, WindowCommands& commands) {
  commands.AllowOnTop(false);
  auto* dialog = new frmRemFunction(n, macros.Load(n), macros.InHex(), window);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  QObject::connect(dialog, &frmRemFunction::ExecuteMacro, dialog,
                   [&macros](const std::string& text) { macros.ExecuteMacro(text); });
  QObject::connect(dialog, &QDialog::finished, dialog, [dialog, n, &macros, &panel, &commands](int result) {
    if (result == QDialog::Accepted) macros.Save(n, dialog->Edited());
    commands.AllowOnTop(true);
    panel.SetupMacroButtons(macros.LoadAll());
  });
  dialog->open();
}

}  // namespace spectrino
