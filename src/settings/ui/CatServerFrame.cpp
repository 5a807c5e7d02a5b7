#include "settings/ui/CatServerFrame.h"

#include "settings/Keys.h"

namespace spectrino::setup {

CatServerFrame::CatServerFrame(QWidget* page) : QObject(page) {
  fraCatServer = MakeFrame("fraCatServer", tr("CAT server: other programs use the radio"), page);
  chkCatServer_ = MakeCheck("chkCatServer", tr("Serve other progra&ms"),
                            tr("Let other programs read and set the radio's frequency through Spectrino, "
                               "as Hamlib's NET rigctl"),
                            fraCatServer);
  txtCatServerPort_ = MakeText("txtCatServerPort", tr("Port of the CAT server (4533)"), 6, fraCatServer);
  txtCatServerAddress_ =
      MakeText("txtCatServerAddress",
               tr("Address that it listens at; 127.0.0.1: programs of this machine alone"), 15, fraCatServer);
  chkCatServerPtt_ = MakeCheck("chkCatServerPtt", tr("They may transmit"),
                               tr("Other programs may make the radio transmit"), fraCatServer);
  chkCatServerTerminal_ = MakeCheck(
      "chkCatServerTerminal", tr("Serial port too"),
      tr("A serial port with a Kenwood TS-2000 on it, for programs that know no NET rigctl"), fraCatServer);
  lblCatServer_ = new QLabel(fraCatServer);
  lblCatServer_->setObjectName("lblCatServer");
  lblCatServer_->setWordWrap(true);
  lblCatServer_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  QGridLayout* grid = GridOf(fraCatServer);
  grid->addWidget(chkCatServer_, 0, 0);
  AddRow(grid, 0, tr("Port"), txtCatServerPort_, 1);
  AddRow(grid, 0, tr("Address"), txtCatServerAddress_, 3);
  grid->addWidget(chkCatServerPtt_, 1, 0);
  grid->addWidget(chkCatServerTerminal_, 1, 1, 1, 4);
  grid->addWidget(lblCatServer_, 2, 0, 1, 5);
  grid->setColumnStretch(4, 1);
  connect(txtCatServerAddress_, &QLineEdit::textChanged, this, &CatServerFrame::Explain);
}

void CatServerFrame::ShowPlace(const QString& place) {
  place_ = place;
  Explain();
}

// Nothing asks a program at that port who it is.
void CatServerFrame::Explain() {
  const QString address = txtCatServerAddress_->text().trimmed();
  const bool here = address.isEmpty() || address == "localhost" || address.startsWith("127.");
  QString text = place_.isEmpty() ? QString() : tr("Now: %1").arg(place_);
  if (!here) {
    if (!text.isEmpty()) text += '\n';
    text += tr("Whoever reaches this machine at %1 can then tune the radio, and transmit if programs may: "
               "there is no password. Use it in a network that is yours alone.")
                .arg(address);
  }
  lblCatServer_->setText(text);
  lblCatServer_->setVisible(!text.isEmpty());
}

void CatServerFrame::AddFields(SetupFields& fields) {
  fields.push_back(FlagField(chkCatServer_, key::kCatServer));
  fields.push_back(TextField(txtCatServerPort_, key::kCatServerPort));
  fields.push_back(TextField(txtCatServerAddress_, key::kCatServerAddress));
  fields.push_back(FlagField(chkCatServerPtt_, key::kCatServerPtt));
  fields.push_back(FlagField(chkCatServerTerminal_, key::kCatServerTerminal));
}

}  // namespace spectrino::setup
