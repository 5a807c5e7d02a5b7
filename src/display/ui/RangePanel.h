// The strip at the right: reference, range, display mode, waterfall height, zoom, spot and undo, steps, peak
// hold, calibration.
// Shows and forwards; what a press does is decided elsewhere.
#pragma once

#include <QAbstractButton>
#include <QButtonGroup>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QWidget>

namespace spectrino {

/// What the strip shows.
struct RangePanelState {
  bool AutoLevel = false;
  int RefLevel = -60;
  int RangeDb = 140;
  int WFFloorDb = 0;
  int WFContrast = 100;  ///< percent
  int DisplayMode = 0;
  int WaterfallSel = 0;
  int Zoom = 0;
  bool BackgroundPeakHold = false;
  bool OwnScale = true;  ///< false with a radio: reference, range and balance of its lines are its own
};

class RangePanel final : public QWidget {
  Q_OBJECT
 public:
  explicit RangePanel(QWidget* parent = nullptr);
  /// Moves the controls without sending anything.
  void Show(const RangePanelState& state);
  /// As a press of AUTO.
  void ToggleAutoLevel() { chkAutoLevel_->click(); }
  /// How far the cmdUpDn buttons move, for their tool tips: "100kHz".
  void SetUpDnStep(const QString& step);

 signals:
  void chkAutoLevel_Click(bool on);
  void Command1_Click();   ///< reference up
  void Command18_Click();  ///< reference down
  void Command3_Click();   ///< range up
  void Command2_Click();   ///< range down
  void WaterfallColours_Change(int floorDb, int contrastPercent);
  void optDisp_Click(int index);
  void optWaterfall_Click(int index);
  void optZoom_Click(int index);
  void cmdSpot_Click();
  void cmdUndo_Click();
  void cmdUpDn_Click(int index);  ///< 0 up, 1 down
  void chkBPH_Click(bool on);
  void cmdIQ_Click(bool open);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  QLabel* AddCaption(const QString& text, const QString& name);
  void AddColours();
  void DescribeColours();
  void AddTuning();
  void AllowScale(bool allow);
  void SetDense(bool dense);

  QLabel* lblRef_ = nullptr;
  QLabel* FraRange_ = nullptr;
  QList<QLabel*> captions_;
  QButtonGroup* optDisp_ = nullptr;
  QButtonGroup* optWaterfall_ = nullptr;
  QButtonGroup* optZoom_ = nullptr;
  QList<QAbstractButton*> scaleButtons_;  ///< those that act on sound inputs alone
  QStringList scaleToolTips_;             ///< what they do
  QPushButton* chkAutoLevel_ = nullptr;
  QSlider* sldWFFloor_ = nullptr;
  QSlider* sldWFContrast_ = nullptr;
  QAbstractButton* chkBPH_ = nullptr;
  QAbstractButton* cmdIQ_ = nullptr;
  QList<QPushButton*> cmdUpDn_;
  QString upDnStep_;
};

}  // namespace spectrino
