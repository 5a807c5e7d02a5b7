// The line at the top: Start and Stop, source, frequencies, mode, S-meter, window buttons.
// Shows and forwards; knows neither radio nor settings.
#pragma once

#include <QAbstractButton>
#include <QColor>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QWidget>

#include "display/ui/FrequencyEntry.h"
#include "display/ui/SMeterBar.h"

namespace spectrino {

/// The list of sources; asks for a fresh list whenever it is opened.
class DevicesBox final : public QComboBox {
  Q_OBJECT
 public:
  using QComboBox::QComboBox;
  void showPopup() override {
    emit AboutToShow();
    QComboBox::showPopup();
  }

 signals:
  void AboutToShow();
};

class HeaderPanel final : public QWidget {
  Q_OBJECT
 public:
  explicit HeaderPanel(QWidget* parent = nullptr);

  void ShowDevices(const QStringList& names, int current);
  /// Start or Stop, and the list locked during a run.
  void ShowRunning(bool running, bool starting);
  /// frequencyText as "14.074.000" or "---------"; an empty mode hides its badge.
  void ShowFrequency(const QString& frequencyText, const QString& modeText);
  /// Opens the entry of VFO A (0) or B (1) with what was typed already.
  void BeginEntry(int vfo, const QString& typed);
  /// An empty text hides VFO B.
  void ShowSubFrequency(const QString& frequencyText);
  /// Amber, beside VFO B; an empty text hides it.
  void ShowSplit(const QString& text);
  void ShowMeter(float levelDbm, float heldDbm, bool known, const QString& reading);
  void ShowOnTop(bool on);
  void ShowFullScreen(bool on);
  /// Of the S-meter's reading, and of VFO A from the next ShowFrequency on.
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

  /// vfo: 0 A, 1 B. Typed as it was typed.
  void FrequencyTyped(int vfo, const QString& text);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  void AddRun(QHBoxLayout& row);
  void AddFrequencies(QHBoxLayout& row);
  void AddWindowButtons(QHBoxLayout& row);
  /// Nothing in the line is cut: what matters least gives way.
  void Fit();

  QAbstractButton* startButton_;
  QAbstractButton* stopButton_;
  DevicesBox* devicesBox_;
  QLabel* lblA_;
  QLabel* lblFreqA_;
  QLabel* lblMode_;
  QColor frequencyColour_{0xff, 0xff, 0xff};
  QLabel* lblB_;
  QLabel* lblFreqB_;
  QLabel* lblSplit_;
  QString split_;
  FrequencyEntry* txtFrequency_;
  int entryVfo_ = 0;
  SMeterBar* bar_;
  QLabel* lblSMeter_;
  QAbstractButton* chkTop_;
  QAbstractButton* cmdFullScreen_;
};

}  // namespace spectrino
