// What every part of the picture is drawn with: options, sizes, fonts, scale and the texts laid out so far.
// Plain data; PanDisplay keeps it up to date, the parts read it.
#pragma once

#include <QFont>

#include "bandplan/BandPlan.h"
#include "display/PlotLayout.h"
#include "display/TextCache.h"
#include "display/WaterfallImage.h"
#include "settings/ColourTable.h"
#include "state/ScaleState.h"

namespace spectrino {

struct DisplayOptions {
  ColourTable Colours = kColoursK4;
  bool Fill = true;
  bool SubD = false;
  bool MHz = true;
  int WaterfallSel = 0;                     ///< 0 off, 1 one eighth, 2 a quarter, 3 half
  bool WFFollow = false;                    ///< older waterfall lines stay at their frequencies
  bool WFLive = true;                       ///< the waterfall takes the newest levels instead of the trace's
  InsetPlace Inset = InsetPlace::OverPlot;  ///< of the status inset

  WaterfallLook Waterfall{};

  bool operator==(const DisplayOptions&) const = default;
};

struct PlotBasis {
  DisplayOptions Options;
  PlotLayout Layout;
  ScaleState Scale;  ///< its geometry is that of the newest frame or scale, whichever came last
  BandPlan Plan;     ///< empty: no strip
  QFont LabelFont;
  QFont TextFont;
  QFont FlagFont;
  int TextHeight = 0;  ///< of TextFont, device pixels
  TextCache Texts;

  [[nodiscard]] OverlayPen PenOf(QPainter& painter) {
    return {painter, Layout, Options.Colours, Texts, Options.Waterfall.Palette};
  }
};

}  // namespace spectrino
