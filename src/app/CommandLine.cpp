#include "app/CommandLine.h"

namespace spectrino {
namespace {

constexpr double kLongestRunSeconds = 1e6;

std::optional<DemoKind> DemoOf(const QString& name) {
  if (name == "iq") return DemoKind::Iq;
  if (name == "k4") return DemoKind::K4;
  if (name == "k4d") return DemoKind::K4D;
  if (name == "icom") return DemoKind::Icom;
  return std::nullopt;
}

// Walks the arguments; values stand behind "=" or in the next argument.
class Parser {
 public:
  Parser(const QStringList& arguments, QString& error) : arguments_(arguments), error_(error) {}

  std::optional<CommandLine> Run() {
    for (at_ = 1; at_ < arguments_.size(); ++at_) {
      const QString& argument = arguments_[at_];
      const qsizetype equals = argument.indexOf('=');
      name_ = argument.left(equals < 0 ? argument.size() : equals);
      inlineValue_ = equals < 0 ? std::nullopt : std::optional<QString>(argument.mid(equals + 1));
      if (!TakeOption()) return std::nullopt;
    }
    return line_;
  }

 private:
  bool TakeOption() {
    if (name_ == "--demo") return TakeDemo();
    if (name_ == "--iq-file") return TakeValue([this](const QString& value) { line_.IqFiles.append(value); });
    if (name_ == "--screenshot") return TakeValue([this](const QString& value) { line_.Screenshot = value; });
    if (name_ == "--stats") return TakeValue([this](const QString& value) { line_.Stats = value; });
    if (name_ == "--quit-after") return TakeSeconds();
    bool* flag = name_ == "--start"                   ? &line_.Start
                 : name_ == "--list-devices"          ? &line_.ListDevices
                 : name_ == "--version"               ? &line_.Version
                 : name_ == "--help" || name_ == "-h" ? &line_.Help
                                                      : nullptr;
    if (flag == nullptr) return Fail("unknown option " + name_);
    if (inlineValue_) return Fail(name_ + " takes no value");
    *flag = true;
    return true;
  }

  bool TakeDemo() {
    const auto kind = DemoOf(inlineValue_.value_or("iq"));
    if (!kind) return Fail("unknown demo \"" + *inlineValue_ + "\"; there are iq, k4, k4d and icom");
    line_.Demo = *kind;
    return true;
  }

  bool TakeSeconds() {
    return TakeValue([this](const QString& value) {
      bool ok = false;
      const double seconds = value.toDouble(&ok);
      if (ok && seconds >= 0 && seconds <= kLongestRunSeconds)
        line_.QuitAfterSeconds = seconds;
      else
        Fail("--quit-after takes seconds, not \"" + value + "\"");
    });
  }

  template <typename Store>
  bool TakeValue(Store store) {
    const QString option = name_;
    if (!inlineValue_ && at_ + 1 >= arguments_.size()) return Fail(option + " needs a value");
    const QString value = inlineValue_ ? *inlineValue_ : arguments_[++at_];
    if (value.isEmpty()) return Fail(option + " needs a value");
    store(value);
    return error_.isEmpty();
  }

  bool Fail(const QString& error) {
    error_ = error;
    return false;
  }

  const QStringList& arguments_;
  QString& error_;
  CommandLine line_;
  qsizetype at_ = 0;
  QString name_;
  std::optional<QString> inlineValue_;
};

}  // namespace

std::optional<CommandLine> ParseCommandLine(const QStringList& arguments, QString& error) {
  error.clear();
  return Parser(arguments, error).Run();
}

QString HelpText() {
  return "spectrino [--start] [--demo[=iq|k4|k4d|icom]] [--iq-file FILE]... [--screenshot FILE]\n"
         "          [--stats FILE] [--quit-after SECONDS] [--list-devices] [--version] [--help]\n"
         "\n"
         "  --start            press Start after loading\n"
         "  --demo[=KIND]      a band without hardware; settings of the run are thrown away\n"
         "  --iq-file FILE     play a 16-bit stereo WAV of I/Q as an input; the first is chosen\n"
         "  --screenshot FILE  write the window as PNG just before the end\n"
         "  --stats FILE       write what the run took as JSON\n"
         "  --quit-after S     end after S seconds as closing the window would\n"
         "  --list-devices     print the inputs and end\n"
         "  --version, --help  print that and end\n"
         "\n"
         "Exit status: 0; 1 when a file of --screenshot or --stats cannot be written; 2 for a wrong option;\n"
         "3 when no device can be had, or what an unattended --start asked for is not there.\n";
}

}  // namespace spectrino
