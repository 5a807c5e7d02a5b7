// The Icom's front panel in the deck: its functions, filters, scope span and three sliders.
// Shows and forwards; sends nothing and decides nothing.
#pragma once

#include <QBoxLayout>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QWidget>
#include <array>

#include "civ/IcomPanelView.h"

namespace spectrino {

/// Every signal is named like the handler it is meant for. Sliders fire for the hand and for the parser
/// alike, the other controls that the parser moves for the hand alone.
class IcomPanel final : public QWidget, public IcomPanelView {
  Q_OBJECT
 public:
  explicit IcomPanel(QWidget* parent = nullptr);

  // IcomPanelView. A slider in the operator's hand stays there: the answer to one of its earlier positions
  // would pull it back.
  void SetAfSlider(int value) override;
  void SetSquelchSlider(int value) override;
  void SetRefLevelSlider(int value) override;
  void SelectSpan(int entry) override;
  void SetSpanLabel(const std::string& text) override;
  void ShowSpanList(bool list) override;
  void SetFixedMode(bool fixed) override;
  void SetFunction(int index, bool on) override;

  /// chkScan_Click fires when the box was checked.
  void ClearScanCheck() { chkScan_->setChecked(false); }

 signals:
  void chkFunc_Click(int index, bool checked);
  void chkMEM_Click(bool checked);
  void chkScan_Click(bool checked);
  void chkFIX_Click(bool checked);
  void cmdAGC_Click();
  void cmdFil_Click(int index);
  void cmdSpeed_Click();
  void cboSpan_Click(int entry);
  void sldVol_Change(int value);
  void sldSQL_Change(int value);
  void sldRFLevel_Change(int value);
  /// It was let go.
  void sld_MouseUp(PanelControl slider);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  QPushButton* AddButton(QHBoxLayout* row, const QString& name, const QString& caption,
                         const QString& toolTip, bool check = false);
  QSlider* AddSlider(const QString& name, const QString& caption, const QString& toolTip, int low, int high);
  void AddSpan();

  QBoxLayout* body_;  ///< the two halves beside each other, or one over the other in a narrow window
  QHBoxLayout* functions_;
  QHBoxLayout* levels_;
  std::array<QPushButton*, 6> chkFunc_{};
  QPushButton* chkScan_;
  QPushButton* chkFIX_;
  QComboBox* cboSpan_;
  QLabel* lblSpan_;
  QSlider* sldVol_;
  QSlider* sldSQL_;
  QSlider* sldRFLevel_;
};

}  // namespace spectrino
