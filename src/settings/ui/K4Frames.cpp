#include "settings/ui/K4Frames.h"

#include "settings/Keys.h"

namespace spectrino::setup {

K4Frames::K4Frames(QWidget* page) : QObject(page) {
  fraK4 = MakeFrame("fraK4", tr("K4 (IP ADDRESS, CAT PORT, PAN PORT)"), page);
  const char* const labels[] = {"&IP Address", "Port &CAT", "Port &PAN"};
  const char* const toolTips[] = {"K4 IP Address", "Port CAT (9200)", "Port Pan (9201)"};
  for (int i = 0; i < 3; ++i) {
    txtK4_[i] = MakeText(QString("txtK4%1").arg(i), tr(toolTips[i]), i == 0 ? 16 : 6, fraK4);
    AddRow(GridOf(fraK4), 0, tr(labels[i]), txtK4_[i], 2 * i);
  }
  GridOf(fraK4)->setColumnStretch(1, 1);
  fraMiscK4 = MakeFrame("fraMiscK4", tr("Misc (K4)"), page);
  chkMinipan_ = MakeCheck("chkMinipan", tr("Second R&X auto"),
                          tr("Automtically opens the second RX when SUB is selected"), fraMiscK4);
  GridOf(fraMiscK4)->addWidget(chkMinipan_, 0, 0);
}

void K4Frames::AddFields(SetupFields& fields) {
  fields.push_back(TextField(txtK4_[0], key::kK4AddressOffered));
  fields.push_back(TextField(txtK4_[1], key::kK4CatPort));
  fields.push_back(TextField(txtK4_[2], key::kK4PanPort));
  fields.push_back(FlagField(chkMinipan_, key::kMinipan));
}

void K4Frames::Show(const SetupView& view) {
  fraK4->setVisible(view.K4);
  fraMiscK4->setVisible(view.K4);
  if (!view.K4) return;
  // A K4 without D has no second receiver to open.
  chkMinipan_->setEnabled(view.K4D);
  if (!view.K4D) chkMinipan_->setChecked(false);
}

}  // namespace spectrino::setup
