#include "settings/ui/HostServerFrame.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QSignalBlocker>

#include "settings/Keys.h"
#include "settings/RigList.h"
#include "settings/ui/SetupWidgets.h"

namespace spectrino::setup {

namespace {
constexpr int kRestMs = 300;
}

HostServerFrame::HostServerFrame(const SerialPorts* ports, AskRigList ask, LookForServer look, QWidget* page)
    : QObject(page), ports_(ports), ask_(std::move(ask)), look_(std::move(look)) {
  fraHostServer = MakeFrame("fraHostServer", tr("CAT server of this machine (rigctld)"), page);
  QGridLayout* grid = GridOf(fraHostServer);
  lblHostServer_ = new QLabel(fraHostServer);
  lblHostServer_->setObjectName("lblHostServer");
  lblHostServer_->setWordWrap(true);
  lblHostServer_->hide();
  MakeModelList();
  MakePortList();
  cboRigSpeed_ =
      MakeList("cboRigSpeed", {tr("usual")}, tr("Speed of the serial device, baud"), fraHostServer);
  for (const int baud : {1200, 4800, 9600, 19200, 38400, 57600, 115200})
    cboRigSpeed_->addItem(QString::number(baud), baud);
  cboRigSpeed_->setItemData(0, 0);
  AddRow(grid, 0, tr("Radio"), cboRigModel_);
  grid->addWidget(cboRigModel_, 0, 1, 1, 3);
  AddRow(grid, 1, tr("Device"), cboRigPort_);
  AddRow(grid, 1, tr("Baud"), cboRigSpeed_, 2);
  grid->addWidget(lblHostServer_, 2, 0, 1, 4);
  grid->setColumnStretch(1, 1);
  typing_.setSingleShot(true);
  connect(&typing_, &QTimer::timeout, this, &HostServerFrame::Look);
}

void HostServerFrame::MakeModelList() {
  cboRigModel_ =
      MakeList("cboRigModel", {}, tr("The radio that a server started by Spectrino serves; type to search"),
               fraHostServer);
  cboRigModel_->setEditable(true);
  cboRigModel_->lineEdit()->setAccessibleName(cboRigModel_->toolTip());
  cboRigModel_->setInsertPolicy(QComboBox::NoInsert);
  cboRigModel_->completer()->setFilterMode(Qt::MatchContains);
  cboRigModel_->completer()->setCompletionMode(QCompleter::PopupCompletion);
  cboRigModel_->addItem(tr("none: a server is started elsewhere"), 0);
  cboRigModel_->lineEdit()->installEventFilter(this);
  cboRigModel_->completer()->popup()->installEventFilter(this);
  connect(cboRigModel_->lineEdit(), &QLineEdit::editingFinished, this, &HostServerFrame::TakeTyped);
  connect(cboRigModel_, &QComboBox::currentIndexChanged, this, &HostServerFrame::TakeTyped);
}

void HostServerFrame::MakePortList() {
  cboRigPort_ = new FreshList(fraHostServer);
  cboRigPort_->setObjectName("cboRigPort");
  cboRigPort_->setEditable(true);
  cboRigPort_->setToolTip(tr("The radio's serial device, or host:port of a radio in the network"));
  cboRigPort_->setAccessibleName(cboRigPort_->toolTip());
  cboRigPort_->lineEdit()->setAccessibleName(cboRigPort_->toolTip());
  cboRigPort_->setInsertPolicy(QComboBox::NoInsert);
  connect(cboRigPort_, &FreshList::AboutToShow, this, &HostServerFrame::ListPorts);
}

// Enter in what was typed takes the radio; only the next one is the dialog's OK. While the search shows what
// it found, its list has the keys.
bool HostServerFrame::eventFilter(QObject* watched, QEvent* event) {
  const auto* key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(event) : nullptr;
  const bool enter = key != nullptr && (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter);
  QAbstractItemView* popup = cboRigModel_->completer()->popup();
  const bool picked = watched == popup && popup->currentIndex().isValid();
  if (!enter || picked || cboRigModel_->currentText() == cboRigModel_->itemText(cboRigModel_->currentIndex()))
    return QObject::eventFilter(watched, event);
  popup->hide();
  TakeTyped();
  return true;
}

void HostServerFrame::Show(bool wanted, const QString& endpoint) {
  ++looks_;
  found_.clear();
  if (!wanted) {
    typing_.stop();
    fraHostServer->hide();
    return;
  }
  const bool typing = !endpoint_.isNull() && endpoint != endpoint_;
  endpoint_ = endpoint.isNull() ? "" : endpoint;
  if (typing)
    typing_.start(kRestMs);
  else
    Look();
}

void HostServerFrame::Look() {
  if (!look_) {
    Tell({.What = FoundServer::Kind::Nobody});
    return;
  }
  // Shown unless it turns out to be elsewhere: that is known at once.
  fraHostServer->show();
  look_(endpoint_.toStdString(), this, [this, look = looks_](const FoundServer& found) {
    if (look == looks_) Tell(found);
  });
}

void HostServerFrame::Tell(const FoundServer& found) {
  const QString where = QString::fromStdString(found.Where);
  fraHostServer->setVisible(found.What != FoundServer::Kind::Elsewhere);
  switch (found.What) {
    case FoundServer::Kind::Elsewhere:
      found_.clear();
      return;
    case FoundServer::Kind::Nobody:
      found_ = where.isEmpty()
                   ? QString()
                   : tr("Nothing answers at %1. Choose your radio here, and Spectrino runs a rigctld for it.")
                         .arg(where);
      break;
    case FoundServer::Kind::Ours:
      found_ = tr("Spectrino runs the rigctld at %1.").arg(where);
      break;
    case FoundServer::Kind::CatServer:
      found_ = tr("A rigctld already answers at %1: it will be used.").arg(where);
      break;
    case FoundServer::Kind::Another:
      found_ = tr("A program at %1 does not answer as a rigctld does. Is the port right?").arg(where);
      break;
  }
  ShowNotes();
  if (asked_ || !ask_) return;
  asked_ = true;
  ask_([frame = QPointer(this)](const std::string& list) {
    if (frame) frame->FillModels(list);
  });
}

void HostServerFrame::ShowNotes() {
  const QString& text = problem_.isEmpty() ? found_ : problem_;
  lblHostServer_->setText(text);
  lblHostServer_->setVisible(!text.isEmpty());
}

void HostServerFrame::FillModels(const std::string& list) {
  const QString typed = cboRigModel_->currentText();
  const bool open = typed != cboRigModel_->itemText(cboRigModel_->currentIndex());
  const int chosen = cboRigModel_->currentData().toInt();
  {
    const QSignalBlocker silent(cboRigModel_);
    while (cboRigModel_->count() > 1) cboRigModel_->removeItem(1);
    for (const RigModel& model : ReadRigList(list))
      cboRigModel_->addItem(QString::fromStdString(model.Name), model.Number);
    if (cboRigModel_->count() == 1)
      cboRigModel_->setItemText(0, tr("none: install the package libhamlib-utils"));
  }
  ChooseModel(chosen);
  // A hand that was faster than the list.
  if (open) cboRigModel_->setEditText(typed);
  if (open && !cboRigModel_->lineEdit()->hasFocus()) TakeTyped();
}

// What is typed becomes the one radio whose name has it in it; where there is none or there are several, none
// is guessed.
void HostServerFrame::TakeTyped() {
  const QString typed = cboRigModel_->currentText().trimmed();
  int exact = cboRigModel_->currentIndex();
  if (typed.isEmpty()) exact = 0;
  // Of two that are called the same the chosen one stays.
  else if (typed.compare(cboRigModel_->itemText(exact), Qt::CaseInsensitive) != 0)
    exact = cboRigModel_->findText(typed, Qt::MatchFixedString);
  QList<int> matches;
  for (int n = 1; exact < 0 && n < cboRigModel_->count(); ++n)
    if (cboRigModel_->itemText(n).contains(typed, Qt::CaseInsensitive)) matches.append(n);
  problem_.clear();
  if (exact >= 0 || matches.size() == 1) {
    const int at = exact >= 0 ? exact : matches.front();
    cboRigModel_->setCurrentIndex(at);
    cboRigModel_->setEditText(cboRigModel_->itemText(at));
  } else if (matches.isEmpty()) {
    problem_ = tr("No radio that rigctld knows is called \"%1\".").arg(typed);
  } else {
    problem_ = tr("%1 radios are called \"%2\": choose one from the list.").arg(matches.size()).arg(typed);
  }
  ShowNotes();
}

QString HostServerFrame::Problem() {
  if (fraHostServer->isHidden()) return {};
  TakeTyped();
  if (!problem_.isEmpty()) cboRigModel_->setFocus();
  return problem_;
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
  fields.push_back(
      {std::string(key::kRigModel.Name.Text()),
       [this](const SetupSection& setup) { ChooseModel(setup.Read(key::kRigModel)); },
       [this](SetupBatch& batch) { batch.Put(key::kRigModel, cboRigModel_->currentData().toInt()); }});
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
