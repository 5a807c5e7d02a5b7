// From a radio's line to the pixels of its picture, as a run goes: poll, frame, paint.
// No window and no clock of its own; what the radio sends is the fuzz target's.
#pragma once

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include "Require.h"
#include "display/PanDisplay.h"
#include "rig/RadioLink.h"
#include "run/FrameMaker.h"

/// What is kept from input to input looks like a leak, and each look for one takes 0.1 s.
extern "C" inline __attribute__((used)) int __lsan_is_turned_off() {
  return 1;
}

namespace spectrino::fuzz {

/// Texts need a program that could have a window. For LLVMFuzzerInitialize.
inline void BeginPictures(int* argc, char*** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  static QGuiApplication application(*argc, *argv);
}

/// A small window's picture, kept from input to input as a window keeps it from run to run.
class Picture {
 public:
  explicit Picture(RadioLink& link) : link_(link) {
    display_.Resize(QSize(360, 180), 1);
    picture_ = QImage(display_.Layout().Width, display_.Layout().Height, QImage::Format_RGB32);
    view_.Link = &link;
  }

  void BeginRun() {
    session_.Radio = RadioState{};
    view_.Running = true;
    frames_.Forget();
    display_.ClearFrames();
    scale_.Update();
  }

  /// One pass: the radio's newest line, if it has one, and the picture. status: beside its spectrum.
  void Pass(const RadioState& radio, const StatusArea& status = {}) {
    session_.Radio = radio;
    session_.Radio.OwnSpectrum = true;
    if (link_.Source().Poll({}, view_.Line) == PollResult::Line) {
      CheckLine();
      frames_.Show(SMeter::TimePoint{});
    }
    display_.SetStatus(status, radio.MainFreqMHz, radio.MainFreqMHz + 0.003);
    if (display_.Prepare().isEmpty()) return;
    QPainter painter(&picture_);
    display_.Paint(painter);
    // Whatever lies under the pointer has to be told.
    display_.SetHover(QPointF(100, 60));
    static_cast<void>(display_.At(QPointF(100, 60)));
  }

 private:
  void CheckLine() const {
    const SpectrumLine& line = view_.Line;
    Require(line.PointCount >= 2 && line.Levels.size() == static_cast<std::size_t>(line.PointCount) + 1);
    Require(line.LeftMHz < line.CentreMHz && line.CentreMHz < line.RightMHz && line.RightMHz < 1e6);
    Require(line.BottomLevel < line.TopLevel);
  }

  RadioLink& link_;
  PanDisplay display_;
  Session session_;
  StageTimes times_;
  RunView view_;
  PlotScale scale_{session_, display_, view_, [] { return 0.0; }};
  FrameMaker frames_{session_, display_, times_, view_, scale_};
  QImage picture_;
};

}  // namespace spectrino::fuzz
