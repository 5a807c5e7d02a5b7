#include "settings/ui/HostServerFrame.h"

#include <QCompleter>
#include <QLineEdit>
#include <QPointer>

#include "settings/Keys.h"
#include "settings/RigList.h"
#include "settings/ui/SetupWidgets.h"

namespace spectrino::setup {

HostServerFrame::HostServerFrame(const SerialPorts* ports, AskRigList ask, QWidget* page)
    : QObject(page), ports_(ports), ask_(std::move(ask)) {
  fraHostServer = MakeFrame("fraHostServer", tr("CAT server of this machine (rigctld)"), page);
  QGridLayout* grid = GridOf(fraHostServer);
  cboRigModel_ =
      MakeList("cboRigModel", {}, tr("The radio that a server started by Spectrino serves; type to search"),
               fraHostServer);
  cboRigModel_->setEditable(true);
  cboRigModel_->lineEdit()->setAccessibleName(cboRigModel_->toolTip());
  cboRigModel_->setInsertPolicy(QComboBox::NoInsert);
  cboRigModel_->completer()->setFilterMode(Qt::MatchContains);
  cboRigModel_->completer()->setCompletionMode(QCompleter::PopupCompletion);
  cboRigModel_->addItem(tr("none: a server is started elsewhere"), 0);
  cboRigPort_ = new FreshList(fraHostServer);
  cboRigPort_->setObjectName("cboRigPort");
  cboRigPort_->setEditable(true);
  cboRigPort_->setToolTip(tr("The radio's serial device, or host:port of a radio in the network"));
  cboRigPort_->setAccessibleName(cboRigPort_->toolTip());
  cboRigPort_->lineEdit()->setAccessibleName(cboRigPort_->toolTip());
  cboRigPort_->setInsertPolicy(QComboBox::NoInsert);
  connect(cboRigPort_, &FreshList::AboutToShow, this, &HostServerFrame::ListPorts);
  cboRigSpeed_ =
      MakeList("cboRigSpeed", {tr("usual")}, tr("Speed of the serial device, baud"), fraHostServer);
  for (const int baud : {1200, 4800, 9600, 19200, 38400, 57600, 115200})
    cboRigSpeed_->addItem(QString::number(baud), baud);
  cboRigSpeed_->setItemData(0, 0);
  AddRow(grid, 0, tr("Radio"), cboRigModel_);
  grid->addWidget(cboRigModel_, 0, 1, 1, 3);
  AddRow(grid, 1, tr("Device"), cboRigPort_);
  AddRow(grid, 1, tr("Baud"), cboRigSpeed_, 2);
  grid->setColumnStretch(1, 1);
}

void HostServerFrame::Show(bool shown) {
  fraHostServer->setVisible(shown);
  if (!shown || asked_ || !ask_) return;
  asked_ = true;
  ask_([frame = QPointer(this)](const std::string& list) {
    if (frame) frame->FillModels(list);
  });
}

void HostServerFrame::FillModels(const std::string& list) {
  const int chosen = ChosenModel();
  while (cboRigModel_->count() > 1) cboRigModel_->removeItem(1);
  for (const RigModel& model : ReadRigList(list))
    cboRigModel_->addItem(QString::fromStdString(model.Name), model.Number);
  if (cboRigModel_->count() == 1)
    cboRigModel_->setItemText(0, tr("none: install the package libhamlib-utils"));
  ChooseModel(chosen);
}

// What is typed need not be an item yet.
int HostServerFrame::ChosenModel() const {
  const int typed = cboRigModel_->findText(cboRigModel_->currentText(), Qt::MatchFixedString);
  return cboRigModel_->itemData(typed >= 0 ? typed : cboRigModel_->currentIndex()).toInt();
}

void HostServerFrame::ChooseModel(int number) {
  int at = cboRigModel_->findData(number);
  if (at < 0) {
    cboRigModel_->addItem(tr("radio %1").arg(number), number);
    at = cboRigModel_->count() - 1;
  }
  cboRigModel_->setCurrentIndex(at);
}

void HostServerFrame::ListPorts() {
  const QString text = cboRigPort_->currentText();
  cboRigPort_->clear();
  if (ports_ != nullptr) {
    for (const SerialPortEntry& entry : ports_->List())
      cboRigPort_->addItem(QString::fromStdString(entry.Path));
  }
  cboRigPort_->setEditText(text);
}

void HostServerFrame::AddFields(SetupFields& fields) {
  fields.push_back({std::string(key::kRigModel.Name.Text()),
                    [this](const SetupSection& setup) { ChooseModel(setup.Read(key::kRigModel)); },
                    [this](SetupBatch& batch) { batch.Put(key::kRigModel, ChosenModel()); }});
  fields.push_back({std::string(key::kRigPort.Name.Text()),
                    [this](const SetupSection& setup) {
                      cboRigPort_->setEditText(QString::fromStdString(setup.Read(key::kRigPort)));
                    },
                    [this](SetupBatch& batch) {
                      batch.Put(key::kRigPort, cboRigPort_->currentText().trimmed().toStdString());
                    }});
  fields.push_back(
      {std::string(key::kRigSpeed.Name.Text()),
       [this](const SetupSection& setup) {
         const int baud = setup.Read(key::kRigSpeed);
         if (cboRigSpeed_->findData(baud) < 0) cboRigSpeed_->addItem(QString::number(baud), baud);
         cboRigSpeed_->setCurrentIndex(cboRigSpeed_->findData(baud));
       },
       [this](SetupBatch& batch) { batch.Put(key::kRigSpeed, cboRigSpeed_->currentData().toInt()); }});
}

}  // namespace spectrino::setup
