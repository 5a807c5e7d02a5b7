#include "sim/k4/K4Radio.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace spectrino {
namespace {

/// A value that is read by its name, set by its name with as many characters, and stepped on by "/".
struct Parameter {
  std::string_view Name;
  const char* Default;
  int StepEnd = 1;  ///< "/" counts 0..StepEnd in the last digit
};
constexpr std::array kParameters =
    std::to_array<Parameter>({{"FA", "00014074000"}, {"FB", "00014080000"}, {"MD", "2"},
                              {"MD$", "2"},          {"BW", "0270"},        {"BW$", "0270"},
                              {"IS", " 0150"},       {"IS$", " 0150"},      {"FT", "0"},
                              {"DT", "0"},           {"DT$", "0"},          {"FP", "2", 3},
                              {"FP$", "2", 3},       {"AG", "030"},         {"AG$", "030"},
                              {"GT", "2", 2},        {"GT$", "2", 2},       {"PA", "0", 2},
                              {"PA$", "0", 2},       {"RA", "00"},          {"RA$", "00"},
                              {"AP", "0"},           {"AP$", "0"},          {"NR", "050"},
                              {"NR$", "050"},        {"NB", "0"},           {"NB$", "0"},
                              {"NA", "0"},           {"NA$", "0"},          {"NM", "10000"},
                              {"NM$", "10000"},      {"AN", "1", 3},        {"AR", "0", 7},
                              {"AR$", "0", 7},       {"RT", "0"},           {"XT", "0"},
                              {"RO", "+0000"},       {"VX", "V0"},          {"TS", "0"},
                              {"AT", "1"},           {"TQ", "0"},           {"BS", "0"},
                              {"SB", "0"},           {"DV", "0"},           {"BL", "0+00"},
                              {"CW", "60"},          {"KS", "020"},         {"PC", "050L"},
                              {"RG", "-00"},         {"SQ", "000"},         {"SQ$", "000"},
                              {"LK", "0"},           {"LK$", "0"},          {"FR", "0"},
                              {"BN", "05"},          {"BN$", "05"},         {"PS", "1"},
                              {"MG", "050"},         {"CP", "000"},         {"SD", "0050"},
                              {"#SPN", "50000"},     {"#REF", "-140"},      {"#SCL", "100"},
                              {"#FXT", "0"},         {"#FXA", "0"},         {"#DPM", "0"},
                              {"#HDPM", "0"},        {"#DSM", "0"},         {"#AVG", "05"},
                              {"#PKM", "0"},         {"#SPM", "1"},         {"#LBL", "0"},
                              {"#NB", "0"},          {"#NBL", "05"},        {"#WFH", "050"},
                              {"ME0005", "0"},       {"ME0070", "1"},       {"ME0102", "0"},
                              {"K2", "2"},           {"K3", "1"},           {"K4", "0"}});

const Parameter* FindParameter(std::string_view command) {
  const Parameter* best = nullptr;
  for (const Parameter& parameter : kParameters) {
    if (command.starts_with(parameter.Name) && (best == nullptr || parameter.Name.size() > best->Name.size()))
      best = &parameter;
  }
  return best;
}

std::string Padded(double value, int width) {
  char text[24];
  std::snprintf(text, sizeof text, "%0*lld", width, static_cast<long long>(std::llround(value)));
  return text;
}

bool AllowedIn(std::string_view value, std::string_view present) {
  if (value.size() != present.size()) return false;
  for (std::size_t i = 0; i < value.size(); ++i) {
    const bool digit = value[i] >= '0' && value[i] <= '9';
    const bool sign = value[i] == '+' || value[i] == '-' || value[i] == ' ';
    if (!digit && !sign && value[i] != present[i]) return false;
  }
  return true;
}

constexpr int kSamples = 2048;
constexpr std::size_t kFrameBytes = 4162;

}  // namespace

K4Radio::K4Radio(bool isK4D) {
  for (const Parameter& parameter : kParameters) values_.emplace(parameter.Name, parameter.Default);
  values_["ME0005"] = isK4D ? "1" : "0";
}

std::string K4Radio::Value(std::string_view key) const {
  const auto place = values_.find(key);
  return place == values_.end() ? std::string() : place->second;
}

int K4Radio::Number(std::string_view key) const {
  return std::atoi(Value(key).c_str());
}

double K4Radio::HertzOf(std::string_view key) const {
  return std::atof(Value(key).c_str());
}

std::string K4Radio::Reply(std::string_view key) const {
  if (key.starts_with("ME")) return std::string(key) + ".000" + Value(key) + ";";
  return std::string(key) + Value(key) + ";";
}

void K4Radio::Set(std::string_view key, std::string value) {
  const auto place = values_.find(key);
  if (place == values_.end() || place->second == value) return;
  place->second = std::move(value);
  if (Changed) Changed(Reply(key));
}

void K4Radio::TurnVfoA(int stepHz) {
  Set("FA", Padded(std::clamp(HertzOf("FA") + stepHz, 1e5, 5.4e7), 11));
}

/// IF[frequency]*****+yyyyrx 00tmvspbd1*: the K3 family's state in one reply of 37 characters and ";".
std::string K4Radio::InformationReply() const {
  std::string text = "IF" + Value("FA") + "     " + Value("RO") + Value("RT") + Value("XT") + " 00" +
                     Value("TQ") + Value("MD") + Value("FR") + "0" + Value("FT") + "0" + Value("DT") + "1 ";
  return text + ";";
}

std::string K4Radio::Meter(bool sub, double seconds) const {
  const double dial = HertzOf(sub ? "FB" : "FA");
  const double width = 10 * HertzOf(sub ? "BW$" : "BW");
  const float dbm = band_.Strongest(dial - width / 2, dial + width / 2, seconds);
  return Padded(std::clamp(dbm + 127.0F, 0.0F, 120.0F), 3);
}

std::string K4Radio::AnswerFixed(std::string_view command, double seconds) const {
  if (command == "IF") return InformationReply();
  if (command == "ID") return "ID017;";
  if (command == "OM") return "OM AP-S-----4--;";
  if (command.starts_with("RV")) return std::string(command.substr(0, 3)) + "01.50;";
  if (command == "SMH" || command == "SM") return std::string(command) + Meter(false, seconds) + ";";
  if (command == "SMH$" || command == "SM$") return std::string(command) + Meter(true, seconds) + ";";
  if (command == "#CTF") return "#CTF " + Padded(HertzOf("FA"), 11) + ";";
  if (command == "TQX") return Reply("TQ");
  if (command == "TM") return "TM000000000000;";
  return {};
}

void K4Radio::SelectBand(std::string_view digits) {
  constexpr int kBandsKHz[] = {1840, 3573, 5357, 7074, 10136, 14074, 18100, 21074, 24915, 28074, 50313};
  const int band = std::atoi(std::string(digits).c_str());
  if (band < 0 || band >= static_cast<int>(std::size(kBandsKHz))) return;
  Set("FA", Padded(kBandsKHz[band] * 1000.0, 11));
}

/// Commands that do more than store a value.
bool K4Radio::Act(std::string_view command) {
  if (command == "AB0") Set("FB", Value("FA"));
  if (command == "AB1") Set("FA", Value("FB"));
  if (command == "AB2") {
    const std::string a = Value("FA");
    Set("FA", Value("FB"));
    Set("FB", a);
  }
  if (command == "TX" || command == "RX") Set("TQ", command == "TX" ? "1" : "0");
  if (command.starts_with("BN") && command.size() == 4) SelectBand(command.substr(2));
  if (command.starts_with("ME") && command.size() > 7 && command[6] == '.') {
    Set(command.substr(0, 6), std::string(command.substr(command.size() - 1)));
    return true;
  }
  return command.starts_with("AB") || command == "FC" || command.starts_with("#AR") || command == "TX" ||
         command == "RX";
}

/// Each mode comes with a filter of its own: in CW around the pitch.
void K4Radio::FitFilter(bool sub) {
  const int modeCode = Number(sub ? "MD$" : "MD");
  const bool narrow = modeCode == 3 || modeCode == 7;
  Set(sub ? "IS$" : "IS", narrow ? " 0060" : " 0150");
  Set(sub ? "BW$" : "BW", narrow ? "0050" : "0270");
}

std::string K4Radio::Answer(std::string_view command, double seconds) {
  if (std::string fixed = AnswerFixed(command, seconds); !fixed.empty()) return fixed;
  if (Act(command)) return {};
  const Parameter* parameter = FindParameter(command);
  if (parameter == nullptr) return "?;";
  std::string_view value = command.substr(parameter->Name.size());
  if (value.empty()) return Reply(parameter->Name);
  const std::string present = Value(parameter->Name);
  if (value == "/") {
    const int next = (present.back() - '0' + 1) % (parameter->StepEnd + 1);
    Set(parameter->Name, present.substr(0, present.size() - 1) + std::to_string(next));
    return {};
  }
  // Spans and attenuators come with as many digits as they need; the others in their fixed width.
  if (parameter->Name == "#SPN" || parameter->Name == "#REF") {
    Set(parameter->Name, std::string(value));
    return {};
  }
  std::string whole(value);
  const char* const filling = parameter->Name == "IS" || parameter->Name == "IS$" ? " " : "0";
  while (whole.size() < present.size()) whole.insert(0, filling);
  if (!AllowedIn(whole, present)) return "?;";
  Set(parameter->Name, whole);
  if (parameter->Name == "MD" || parameter->Name == "MD$") FitFilter(parameter->Name == "MD$");
  return {};
}

/// As the radio sends it: sync, letter at 6, span at 7 (6 digits), centre at 13 (11), reference at 24 (5,
/// tenths of a decibel), 2048 samples from 64 on (tenths, 16 bits, high byte first).
std::string K4Radio::Frame(char display, double seconds) const {
  const bool sub = display == 'Z';
  const int modeCode = Number(sub ? "MD$" : "MD");
  const bool narrow = modeCode == 3 || modeCode == 7;
  const double panSpan = std::clamp(HertzOf("#SPN"), 6000.0, 368000.0);
  // Somewhat wider than what is shown, as the radio's own analyser is.
  const double span = display == 'A' ? std::min(999000.0, std::ceil(panSpan * 1.25 / 1000) * 1000)
                      : narrow       ? 2400
                                     : 12000;
  const double centre = HertzOf(sub ? "FB" : "FA");
  char head[65];
  std::snprintf(head, sizeof head, "%c%06d%011lld%+05d", display, static_cast<int>(span),
                static_cast<long long>(centre), std::clamp(Number("#REF"), -999, 999) * 10);
  std::string frame(kFrameBytes, '\0');
  const unsigned char sync[] = {0xFF, 0xFE, 0x01, 0x00, 0x02};
  std::copy(std::begin(sync), std::end(sync), frame.begin());
  frame.replace(6, 23, head, 23);
  std::array<float, kSamples> levels{};
  band_.Fill(centre, span, seconds, levels);
  for (std::size_t j = 0; j < levels.size(); ++j) {
    const auto tenths = static_cast<int>(std::lround(levels[j] * 10));
    frame[64 + 2 * j] = static_cast<char>(tenths >> 8 & 0xFF);
    frame[65 + 2 * j] = static_cast<char>(tenths & 0xFF);
  }
  return frame;
}

}  // namespace spectrino
