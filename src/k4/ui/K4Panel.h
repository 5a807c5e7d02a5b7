// The K4's front panel in the deck: its functions, filters, spans and three sliders.
// Shows and forwards; sends nothing and decides nothing.
#pragma once

#include <QAbstractButton>
#include <QHash>
#include <QSlider>
#include <QTimer>
#include <QWidget>
#include <array>

#include "k4/K4PanelView.h"
#include "k4/K4State.h"

namespace spectrino {

class K4Panel final : public QWidget, public K4PanelView {
  Q_OBJECT
 public:
  explicit K4Panel(QWidget* parent = nullptr);

  /// Captions and pressed looks of everything that follows the radio, without a signal.
  void Show(const K4State& state);
  /// Shows a check box as it is; no signal.
  void SetNamedCheck(const QString& name, bool on);
  void SelectSpanPreset(int index);

  // K4PanelView. SliderMoved fires when a value differs, without a commit.
  void SetCheck(K4Check check, bool ticked) override;
  [[nodiscard]] bool SubTicked() const override { return buttons_.value("chkSub")->isChecked(); }
  void SetFilterCaption(int receiver, const std::string& caption) override;
  void SetVolume(int index, int value) override;
  void SetVolumeToolTip(const std::string& text) override;
  [[nodiscard]] int Notch() const override { return sldNotch_->value(); }
  void SetNotch(int value) override;
  void SetNotchToolTip(const std::string& text) override;

 signals:
  /// A button by its control name: "cmdAGCK4", "cmdNotch0" ...
  void Clicked(const QString& name);
  /// A check box by its control name, when it was clicked: "chkSplt" ...
  void Toggled(const QString& name, bool on);
  void optK4Span_Click(int index);
  /// "sldVol1", "sldVol2" or "sldNotch", at every step.
  void SliderMoved(const QString& name, int value);
  /// The same when the hand let go, or has rested for 150 ms.
  void SliderCommitted(const QString& name, int value);

 private:
  QAbstractButton* AddButton(const char* name, const char* caption, const char* toolTip, bool check);
  QSlider* AddSlider(const char* name, int maximum, const QString& toolTip);
  void MoveFromRadio(QSlider* slider, int value);
  void SetActive(const char* name, bool active, const QString& caption = {});

  QHash<QString, QAbstractButton*> buttons_;
  std::array<QAbstractButton*, 3> optK4Span_{};
  bool fromRadio_ = false;
  QSlider* sldVol1_;
  QSlider* sldVol2_;
  QSlider* sldNotch_;
};

}  // namespace spectrino
