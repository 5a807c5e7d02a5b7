#include "macros/ui/frmRemFunction.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace spectrino {
namespace {

constexpr int kCommandWidth = 320;

}  // namespace

frmRemFunction::frmRemFunction(int n, const Macro& stored, bool forIcom, QWidget* parent) : QDialog(parent) {
  setObjectName("frmRemFunction");
  setWindowTitle(tr("Macro %1").arg(n + 1));
  new QVBoxLayout(this);
  AddFields(forIcom);
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

QPushButton* frmRemFunction::AddButton(const char* name, const QString& caption, const QString& toolTip) {
  auto* button = new QPushButton(caption, this);
  button->setObjectName(name);
  button->setToolTip(toolTip);
  button->setAccessibleName(toolTip);
  // Enter in a field means OK, never a try.
  button->setAutoDefault(false);
  return button;
}

void frmRemFunction::AddFields(bool forIcom) {
  auto* form = new QFormLayout;
  txtCaption_ = AddLine("txtCaption", tr("Caption of the button"));
  form->addRow("&CAPTION", txtCaption_);
  txtMacro_ = AddLine("txtMacro", tr("Command of the button, or when switched on"));
  form->addRow("&MACRO", txtMacro_);
  chkOnOff_ = new QCheckBox("O&FF :", this);
  chkOnOff_->setObjectName("chkOnOff");
  chkOnOff_->setToolTip(tr("The button switches on and off"));
  chkOnOff_->setAccessibleName(chkOnOff_->toolTip());
  txtOff_ = AddLine("txtOff", tr("Command when switched off"));
  form->addRow(chkOnOff_, txtOff_);
  auto* lblIcom = new QLabel("Format: Cn SC Data (ex PREAMP ON=160201)", this);
  lblIcom->setObjectName("lblIcom");
  form->addRow(lblIcom);
  lblIcom->setVisible(forIcom);
  static_cast<QVBoxLayout*>(layout())->addLayout(form);
}

void frmRemFunction::AddButtons() {
  auto* row = new QHBoxLayout;
  cmdTest_ = AddButton("cmdTest", tr("&Test"), tr("Sends the command"));
  connect(cmdTest_, &QPushButton::clicked, this, [this] { emit ExecuteMacro(Edited().Mac); });
  chkTest_ = AddButton("chkTest", tr("&Test"), tr("Sends one command, then the other"));
  chkTest_->setCheckable(true);
  connect(chkTest_, &QPushButton::clicked, this, &frmRemFunction::chkTest_Click);
  auto* cmdClear = AddButton("cmdClear", tr("C&lear"), tr("Empties the macro"));
  connect(cmdClear, &QPushButton::clicked, this, &frmRemFunction::cmdClear_Click);
  auto* cmdOK = AddButton("cmdOK", tr("&OK"), tr("Saves the macro and closes"));
  cmdOK->setDefault(true);
  connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
  auto* cmdCancel = AddButton("cmdCancel", tr("Ca&ncel"), tr("Closes without saving"));
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
  auto* dialog = new frmRemFunction(n, macros.Load(n), macros.ForIcom(), window);
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
