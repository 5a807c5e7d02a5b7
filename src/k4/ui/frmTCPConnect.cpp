#include "k4/ui/frmTCPConnect.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPointer>
#include <QVBoxLayout>

#include "controls/Controls.h"

namespace spectrino {

frmTCPConnect::frmTCPConnect(const QString& message, const K4ConnectTexts& shown, QWidget* parent)
    : QDialog(parent) {
  setObjectName("frmTCPConnect");
  setWindowTitle("Spectrino");
  auto* frame = new QGroupBox(this);
  frame->setObjectName("fraConnect");
  auto* grid = new QGridLayout(frame);
  auto* lblConnect = new QLabel(message, frame);
  lblConnect->setObjectName("lblConnect");
  lblConnect->setWordWrap(true);
  grid->addWidget(lblConnect, 0, 0, 1, 2);
  const char* const captions[] = {"IP Address", "Port CAT", "Port PAN", "Time Out (ms)"};
  const char* const toolTips[] = {"K4 IP Address", "Port CAT (9200)", "Port Pan (9201)",
                                  "Time Out Min=250, max=3000"};
  const std::string* const texts[] = {&shown.Host, &shown.CatPort, &shown.PanPort, &shown.TimeOut};
  for (int i = 0; i < 4; ++i) {
    auto* label = new QLabel(captions[i], frame);
    label->setObjectName(QString("lblPort%1").arg(i));
    auto* text = new QLineEdit(QString::fromStdString(*texts[i]), frame);
    Describe(*text, QString("txtIP%1").arg(i), toolTips[i]);
    label->setBuddy(text);
    grid->addWidget(label, i + 1, 0);
    grid->addWidget(text, i + 1, 1);
    txtIP_[static_cast<std::size_t>(i)] = text;
  }
  QPushButton* cmdOK = MakeButton("cmdOK", tr("&OK"), {}, frame);
  cmdOK->setDefault(true);
  QPushButton* cmdCancel = MakeButton("cmdCancel", tr("&Cancel"), {}, frame);
  connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(cmdOK);
  buttons->addWidget(cmdCancel);
  grid->addLayout(buttons, 5, 0, 1, 2);
  auto* rows = new QVBoxLayout(this);
  rows->addWidget(frame);
}

K4ConnectTexts frmTCPConnect::Texts() const {
  return {txtIP_[0]->text().toStdString(), txtIP_[1]->text().toStdString(), txtIP_[2]->text().toStdString(),
          txtIP_[3]->text().toStdString()};
}

std::optional<K4ConnectTexts> K4RetryWindow::Ask(const std::string& message, const K4ConnectTexts& shown) {
  if (unattended_) return std::nullopt;
  // The window may be closed while the dialog is open, and takes the dialog with it.
  const QPointer<frmTCPConnect> dialog = new frmTCPConnect(QString::fromStdString(message), shown, parent_());
  const int answer = dialog->exec();
  if (dialog.isNull()) return std::nullopt;
  const K4ConnectTexts texts = dialog->Texts();
  delete dialog.data();
  if (answer != QDialog::Accepted) return std::nullopt;
  return texts;
}

}  // namespace spectrino
