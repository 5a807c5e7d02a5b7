// The options of the command line.
// Parsing only; what they do is main's.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace spectrino {

enum class DemoKind { None, Iq, K4, K4D, Icom };

struct CommandLine {
  bool Start = false;
  DemoKind Demo = DemoKind::None;
  QStringList IqFiles;
  QString Screenshot;
  QString Stats;
  std::optional<double> QuitAfterSeconds;
  bool ListDevices = false;
  bool Version = false;
  bool Help = false;
};

/// Nothing, with the reason in error, for an option or value that is not known.
[[nodiscard]] std::optional<CommandLine> ParseCommandLine(const QStringList& arguments, QString& error);

[[nodiscard]] QString HelpText();

}  // namespace spectrino
