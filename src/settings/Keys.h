// Every key of section "Setup", with its default, in the order of the settings table.
// Only names and defaults: what they mean stands beside the fields of PanSettings.
#pragma once

#include "settings/ColourTable.h"
#include "settings/SettingKey.h"

namespace spectrino {

inline constexpr std::string_view kOwnApplication = "Spectrino";
inline constexpr std::string_view kSetupSection = "Setup";

namespace key {

// The source; the flags of the radios are in SourceChoice.h.
inline constexpr IntKey kDevice{{"Device"}, 0, {0, INT16_MAX}};
inline constexpr TextKey kNDevice{{"NDevice"}, ""};
/// The stable name of the chosen sound input: list indices move when a card is plugged, this does not.
inline constexpr TextKey kDeviceId{{"DeviceId"}, ""};

// Sound card and transform.
inline constexpr FlagKey k24Bits{{"24b"}};
inline constexpr IntKey kBits{{"Bits"}, 5, {0, 8}};
inline constexpr IntKey kSRate{{"SRate"}, 2, {0, 6}};
inline constexpr FlagKey kIq{{"IQ"}};
inline constexpr FlagKey kIqCw{{"IQCW"}};
inline constexpr FlagKey kIqUsb{{"IQUSB"}};
inline constexpr FlagKey kFlip6{{"Flip6"}};
inline constexpr NumberKey kFlipFreq{{"FlipFreq"}, 44.0, 1, {0, 1e6}};
inline constexpr NumberKey kFlipFreq2{{"FlipFreq2"}, 54.0, 1, {0, 1e6}};
inline constexpr FlagKey kTypZoom{{"TypZoom"}};
inline constexpr IntKey kZoom{{"Zoom"}, 0, {0, 5}};
inline constexpr FlagKey kSmoothZeroHz{{"Spik0"}};
inline constexpr IntKey kWindowType{{"APO"}, 0, {0, 5}};
inline constexpr IntKey kHistoryDepth{{"integr"}, 2, {0, 10}};
inline constexpr FlagKey kPriority{{"Priority"}};

// Frequencies.
inline constexpr IntKey kCatControl{{"OptFreq"}, 0, {0, 8}};
inline constexpr NumberKeys<5> kOffset{{"Offset"}, 0};
inline constexpr NumberKeys<4> kCenter{{"Center"}, 7015, {0, 1e9}};
inline constexpr NumberKey kGlobalOffset{{"Global"}, -6.0};
inline constexpr IntKeys<3> kAutoSpan{{"AutoSpan"}, {25, 150, 300}};
inline constexpr IntKeys<4> kStep{{"Step"}, {10, 25, 100, 10}};
inline constexpr FlagKey kMouse{{"Mouse"}, true};
inline constexpr FlagKey kWheelInverted{{"Inverted"}};

// Display.
inline constexpr IntKey kDesign{{"Design"}, 0, {0, 1}};
inline constexpr FlagKey kSubD{{"subd"}};
inline constexpr FlagKey kFill{{"Fill"}, true};
inline constexpr FlagKey kMHz{{"MHZ"}, true};
inline constexpr FlagKey kBandMode{{"BandMode"}};
/// Default: kColoursK4[n]. Values wider than 24 bits are masked where they are loaded.
[[nodiscard]] constexpr IntKey Colour(std::size_t n) {
  return {KeyName("ccolor").WithIndex(n), static_cast<std::int32_t>(kColoursK4[n]), IntLimits{}};
}
/// The waterfall takes the newest levels, whatever the display mode makes of them.
inline constexpr FlagKey kWFLive{{"WFLive"}, true};
/// Its colours: the palette by number, what is darkest in dB above where it would be, how steep in percent.
inline constexpr IntKey kWFPalette{{"WFPalette"}, 0, {0, 3, 0}};
inline constexpr IntKey kWFFloor{{"WFFloor"}, 0, {-40, 40}};
inline constexpr IntKey kWFContrast{{"WFContrast"}, 100, {25, 400, 100}};
/// Older waterfall lines stay at their frequencies.
inline constexpr FlagKey kWFFollow{{"WFFollow"}, true};
/// The strip on the frequency axis: 0 none, else the IARU region.
inline constexpr IntKey kBandPlanRegion{{"BandPlanRegion"}, 1, {0, 3}};
/// Where the radio's status inset stands: 0 by the room there is, 1 over the plot, 2 beside it, 3 above it,
/// 4 over the waterfall.
inline constexpr IntKey kInsetPlace{{"InsetPlace"}, 0, {0, 4, 0}};
/// Lines to a row of the waterfall, joined by their maximum (0) or average (1).
inline constexpr IntKey kWFSpeed{{"WFSpeed"}, 1, {1, 50}};
inline constexpr IntKey kWFJoin{{"WFJoin"}, 0, {0, 1}};
inline constexpr FlagKey kAutoRef{{"AutoREF"}, true};
inline constexpr FlagKey kQsy{{"qsy"}, true};
inline constexpr FlagKey kMinipan{{"MP"}};
inline constexpr IntKey kOptSM{{"OptSM"}, 0, {0, 1}};
inline constexpr IntKey kSMeterCorr{{"SMCorr"}};
inline constexpr NumberKey kSMeterHold{{"SMHold"}, 4, 0, {0, 3600}};
/// Quick split: the first in CW, AM and DATA, the second in SSB.
inline constexpr NumberKey kQSplit0{{"QSplit0"}, 1, 0, {-1000, 1000}};
inline constexpr NumberKey kQSplit1{{"QSplit1"}, 5, 0, {-1000, 1000}};

// Links to radios, read when they are opened.
/// A link that is lost comes back by itself; otherwise the run ends.
inline constexpr FlagKey kReconnect{{"Reconnect"}, true};
inline constexpr IntKey kPort{{"Port"}, 1, {1, 32}};
inline constexpr TextKey kIcAddress{{"ICADDR"}, ""};
inline constexpr TextKey kControllerAddress{{"CTRLADDR"}, "E0"};
inline constexpr IntKey kIcomControl{{"ICCTRL"}, 0, {0, 1}};
/// Written when the program switches a radio's scope output on and off; never read back.
inline constexpr FlagKey kScopeOutput{{"ICSCOPE"}};
/// At connect a missing address is "not defined"; only the setup dialog offers kK4AddressOffered.
inline constexpr TextKey kK4Address{{"K4TCP"}, ""};
inline constexpr TextKey kK4AddressOffered{{"K4TCP"}, "127.0.0.1"};
inline constexpr IntKey kK4CatPort{{"K4CATPORT"}, 9200, {0, 65535}};
inline constexpr IntKey kK4PanPort{{"K4PANPORT"}, 9201, {0, 65535}};
inline constexpr IntKey kTcpTimeOutMs{{"TCPTimeOut"}, 1000, {0, INT32_MAX}};
/// host:port of the CAT server; "" means the default one.
inline constexpr TextKey kHostEndpoint{{"HostEndpoint"}, ""};
/// The CAT server that the program runs itself: its number of the radio, 0 for none; device; baud, 0 for its
/// own.
inline constexpr IntKey kRigModel{{"RigModel"}, 0, {0, 999999, 0}};
inline constexpr TextKey kRigPort{{"RigPort"}, ""};
inline constexpr IntKey kRigSpeed{{"RigSpeed"}, 0, {0, 4000000, 0}};
inline constexpr FlagKey kCatServer{{"CatServer"}};
inline constexpr IntKey kCatServerPort{{"CatServerPort"}, 4533, {1, 65535, 4533}};
inline constexpr TextKey kCatServerAddress{{"CatServerAddress"}, "127.0.0.1"};
/// Other programs may make the radio transmit.
inline constexpr FlagKey kCatServerPtt{{"CatServerPtt"}};
/// A terminal beside the port, for programs that know serial lines alone.
inline constexpr FlagKey kCatServerTerminal{{"CatServerTerminal"}};

// The window. Positions and sizes in twips, which outgrow 16 bits on a wide screen.
inline constexpr IntKey kTop{{"Top"}, 0, IntLimits{}};
inline constexpr IntKey kLeft{{"Left"}, 0, IntLimits{}};
inline constexpr IntKey kHeight{{"Height"}, 5175, {1, INT32_MAX, 5175}};
inline constexpr IntKey kWidth{{"Width"}, 10905, {1, INT32_MAX, 10905}};
inline constexpr IntKey kWState{{"WState"}};
/// Those of the sliders.
inline constexpr NumberLimits kBalanceLimits{-500, 500};
inline constexpr NumberKey kDePhase{{"DePhase"}, 0, 0, kBalanceLimits};
inline constexpr NumberKey kDeAmp{{"DeAmp"}, 0, 0, kBalanceLimits};
inline constexpr std::int32_t kUsualRef = -60;
inline constexpr std::int32_t kUsualDivisor = 1000000;
inline constexpr IntKey kRef{{"Ref"}, kUsualRef, {-199, 200, kUsualRef}};
inline constexpr IntKey kDivisor{{"Divisor"}, kUsualDivisor, {1, INT32_MAX, kUsualDivisor}};
inline constexpr std::size_t kRefBandCount = 13;
/// currentRef: the value of kRef, which a band without a value of its own takes over. band: 0..12.
[[nodiscard]] constexpr IntKey BandRef(std::size_t band, std::int32_t currentRef) {
  return {KeyName("Ref").WithIndex(band), currentRef, {-200, 200, kUsualRef}};
}
[[nodiscard]] constexpr IntKey BandDivisor(std::size_t band, std::int32_t currentDivisor) {
  return {KeyName("Divisor").WithIndex(band), currentDivisor, {1, INT32_MAX, kUsualDivisor}};
}
inline constexpr NumberKey kLevelCorrection{{"db"}, 0, 0, {-200, 200}};
/// Bottom and top of the plot and the waterfall's colours follow the noise; reference and range take over.
inline constexpr FlagKey kAutoLevel{{"AutoLevel"}, true};
inline constexpr IntKey kDisplayMode{{"Disp"}, 0, {0, 3}};
inline constexpr FlagKey kOnTop{{"OnTop"}};
inline constexpr FlagKey kBackgroundPeakHold{{"bph"}};
inline constexpr IntKey kWaterfall{{"WF"}, 0, {0, 3}};
inline constexpr FlagKey kCwReverse{{"CWR"}};
inline constexpr FlagKey kFskReverse{{"FSKR"}};

}  // namespace key
}  // namespace spectrino
