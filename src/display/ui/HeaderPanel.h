// The line at the top: Start and Stop, source, frequencies, mode, S-meter, window buttons.
// Shows and forwards; knows neither radio nor settings.
#pragma once

#include <QAbstractButton>
#include <QColor>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QWheelEvent>
#include <QWidget>

#include "display/ui/SMeterBar.h"
#include "display/ui/VfoPanel.h"

namespace spectrino {

/// The list of sources; asks for a fresh list whenever it is opened. Not moved by the wheel: a run would go
/// over to whatever passes under the pointer.
class DevicesBox final : public QComboBox {
  Q_OBJECT
 public:
  using QComboBox::QComboBox;
  void showPopup() override {
    emit AboutToShow();
    QComboBox::showPopup();
  }

 protected:
  void wheelEvent(QWheelEvent* event) override { event->ignore(); }

 signals:
  void AboutToShow();
};

class HeaderPanel final : public QWidget {
  Q_OBJECT
 public:
  explicit HeaderPanel(QWidget* parent = nullptr);

  void ShowDevices(const QStringList& names, int current);
  /// Start or Stop.
  void ShowRunning(bool running, bool starting);
  [[nodiscard]] VfoPanel& Vfos() { return *vfos_; }
  void ShowMeter(float levelDbm, float heldDbm, bool known, const QString& reading);
  void ShowOnTop(bool on);
  void ShowFullScreen(bool on);
  /// Of the S-meter's reading and of VFO A.
  void SetColours(const QColor& meter, const QColor& frequency);

 signals:
  void StartButton_Click();
  void StopButton_Click();
  void DevicesBox_Click(int index);
  void DevicesWanted();
  void cmdFullScreen_Click();
  void chkTop_Click(bool on);
  void cmdSetup_Click();
  void cmdHelp_Click();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void AddRun(QHBoxLayout& row);
  void AddWindowButtons(QHBoxLayout& row);
  /// Nothing in the line is cut: what matters least gives way.
  void Fit();

  QAbstractButton* startButton_;
  QAbstractButton* stopButton_;
  DevicesBox* devicesBox_;
  VfoPanel* vfos_;
  SMeterBar* bar_;
  QLabel* lblSMeter_;
  QAbstractButton* chkTop_;
  QAbstractButton* cmdFullScreen_;
};

}  // namespace spectrino
