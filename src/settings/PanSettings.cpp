#include "settings/PanSettings.h"

namespace spectrino {
namespace {

template <typename Keys, typename Value, std::size_t N>
void ReadRow(const SetupSection& setup, const Keys& keys, std::array<Value, N>& values) {
  static_assert(Keys::kCount == N);
  for (std::size_t n = 0; n < N; ++n) values[n] = setup.Read(keys[n]);
}

void LoadCapture(const SetupSection& setup, PanSettings& settings) {
  settings.Use24Bits = setup.Read(key::k24Bits);
  settings.Bits = setup.Read(key::kBits);
  settings.SRate = setup.Read(key::kSRate);
  settings.Iq = setup.Read(key::kIq);
  settings.IqCw = setup.Read(key::kIqCw);
  settings.IqUsb = setup.Read(key::kIqUsb);
  settings.Flip6 = setup.Read(key::kFlip6);
  settings.FlipFreqMHz = setup.Read(key::kFlipFreq);
  settings.FlipFreq2MHz = setup.Read(key::kFlipFreq2);
  settings.TypZoom = setup.Read(key::kTypZoom);
  settings.Zoom = setup.Read(key::kZoom);
  settings.SmoothZeroHz = setup.Read(key::kSmoothZeroHz);
  settings.WindowTypeIndex = setup.Read(key::kWindowType);
  settings.HistoryDepth = setup.Read(key::kHistoryDepth);
  settings.Priority = setup.Read(key::kPriority);
}

void LoadTuning(const SetupSection& setup, PanSettings& settings) {
  settings.Control = static_cast<CatControl>(setup.Read(key::kCatControl));
  settings.IcomControl = setup.Read(key::kIcomControl);
  ReadRow(setup, key::kOffset, settings.OffsetKHz);
  ReadRow(setup, key::kCenter, settings.CenterKHz);
  settings.GlobalOffsetKHz = setup.Read(key::kGlobalOffset);
  ReadRow(setup, key::kAutoSpan, settings.AutoSpanKHz);
  ReadRow(setup, key::kStep, settings.StepHz);
  settings.WheelInverted = setup.Read(key::kWheelInverted);
  settings.HostEndpoint = setup.Read(key::kHostEndpoint);
}

void LoadDisplay(const SetupSection& setup, PanSettings& settings) {
  settings.DisplayDesign = setup.Read(key::kDesign);
  settings.SubD = setup.Read(key::kSubD);
  settings.Fill = setup.Read(key::kFill);
  settings.MHz = setup.Read(key::kMHz);
  settings.BandMode = setup.Read(key::kBandMode);
  for (std::size_t n = 0; n < kColourCount; ++n)
    settings.Colours[n] = static_cast<std::uint32_t>(setup.Read(key::Colour(n))) & 0xFFFFFF;
  settings.Qsy = setup.Read(key::kQsy);
  settings.WFFollow = setup.Read(key::kWFFollow);
  settings.WFLive = setup.Read(key::kWFLive);
  settings.WFPalette = setup.Read(key::kWFPalette);
  settings.WFFloorDb = setup.Read(key::kWFFloor);
  settings.WFContrast = setup.Read(key::kWFContrast);
  settings.BandPlanRegion = setup.Read(key::kBandPlanRegion);
  settings.InsetPlace = setup.Read(key::kInsetPlace);
  settings.MinipanOption = setup.Read(key::kMinipan);
  settings.OptSM = setup.Read(key::kOptSM);
  settings.SMeterCorrDb = setup.Read(key::kSMeterCorr);
  settings.SMeterHoldSeconds = setup.Read(key::kSMeterHold);
}

void LoadRange(const SetupSection& setup, PanSettings& settings) {
  settings.AutoLevel = setup.Read(key::kAutoLevel);
  settings.AutoRef = setup.Read(key::kAutoRef);
  settings.RefLevel = setup.Read(key::kRef);
  settings.RangeDivisor = setup.Read(key::kDivisor);
  for (std::size_t band = 0; band < key::kRefBandCount; ++band) {
    settings.BandRef[band] = setup.Read(key::BandRef(band, settings.RefLevel));
    settings.BandDivisor[band] = setup.Read(key::BandDivisor(band, settings.RangeDivisor));
  }
}

void PutRange(SetupBatch& batch, const PanSettings& settings, std::optional<int> refBand) {
  const int ref = settings.RefLevel;
  const int divisor = settings.RangeDivisor;
  batch.Put(key::kAutoLevel, settings.AutoLevel)
      .Put(key::kWFFloor, settings.WFFloorDb)
      .Put(key::kWFContrast, settings.WFContrast)
      .Put(key::kLevelCorrection, settings.BandLevelDb)
      .Put(key::kRef, ref)
      .Put(key::kDivisor, divisor);
  if (!settings.AutoRef || !refBand || *refBand < 0) return;
  const auto band = static_cast<std::size_t>(*refBand);
  if (band < key::kRefBandCount)
    batch.Put(key::BandRef(band, ref), settings.BandRef[band])
        .Put(key::BandDivisor(band, divisor), settings.BandDivisor[band]);
}

}  // namespace

void LoadStartup(const SetupSection& setup, PanSettings& settings) {
  settings.Mouse = setup.Read(key::kMouse);
  settings.DePhase = setup.Read(key::kDePhase);
  settings.DeAmp = setup.Read(key::kDeAmp);
  settings.DisplayMode = setup.Read(key::kDisplayMode);
  settings.OnTop = setup.Read(key::kOnTop);
  settings.BackgroundPeakHold = setup.Read(key::kBackgroundPeakHold);
  settings.BandLevelDb = setup.Read(key::kLevelCorrection);
  settings.WaterfallSel = setup.Read(key::kWaterfall);
  settings.CwReverse = setup.Read(key::kCwReverse);
  settings.FskReverse = setup.Read(key::kFskReverse);
}

void LoadSettings(const SetupSection& setup, PanSettings& settings, std::span<const RadioSource> radios) {
  settings.Source = ReadSource(setup, settings.Source, radios);
  LoadCapture(setup, settings);
  LoadTuning(setup, settings);
  LoadDisplay(setup, settings);
  LoadRange(setup, settings);
}

void SaveRange(SetupSection& setup, const PanSettings& settings, std::optional<int> refBand) {
  SetupBatch batch(setup);
  PutRange(batch, settings, refBand);
  batch.Save();
}

void SaveZoom(SetupSection& setup, int zoom) {
  setup.Write(key::kZoom, zoom);
}

void SaveMainKeys(SetupSection& setup, const PanSettings& settings, std::optional<int> refBand) {
  SetupBatch batch(setup);
  batch.Put(key::kDePhase, settings.DePhase).Put(key::kDeAmp, settings.DeAmp);
  PutRange(batch, settings, refBand);
  batch.Put(key::kDisplayMode, settings.DisplayMode)
      .Put(key::kOnTop, settings.OnTop)
      .Put(key::kBackgroundPeakHold, settings.BackgroundPeakHold)
      .Put(key::kWaterfall, settings.WaterfallSel)
      .Put(key::kCwReverse, settings.CwReverse)
      .Put(key::kFskReverse, settings.FskReverse)
      .Save();
}

WindowGeometry LoadGeometry(const SetupSection& setup) {
  WindowGeometry geometry;
  geometry.Top = setup.Read(key::kTop);
  geometry.Left = setup.Read(key::kLeft);
  geometry.Height = setup.Read(key::kHeight);
  geometry.Width = setup.Read(key::kWidth);
  geometry.State = setup.Read(key::kWState) == 2 ? WindowState::Maximised : WindowState::Normal;
  return geometry;
}

void SaveGeometry(SetupSection& setup, const WindowGeometry& geometry) {
  SetupBatch batch(setup);
  if (geometry.State == WindowState::Normal)
    batch.Put(key::kTop, geometry.Top)
        .Put(key::kLeft, geometry.Left)
        .Put(key::kHeight, geometry.Height)
        .Put(key::kWidth, geometry.Width)
        .Put(key::kWState, 0);
  else if (geometry.State == WindowState::Maximised)
    batch.Put(key::kWState, 2);
  batch.Save();
}

}  // namespace spectrino
