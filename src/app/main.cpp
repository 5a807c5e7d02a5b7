// Program start: options, the parts, the window.
#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <cstdio>

#include "app/CommandLine.h"
#include "app/EndSignals.h"
#include "app/Program.h"
#include "app/RunStats.h"
#include "app/Theme.h"

namespace {

using namespace spectrino;

constexpr int kWrongOption = 2;
constexpr int kNoDevice = 3;

int PrintDevices(Program& program) {
  for (const std::string& name : program.SourceNames()) std::printf("%s\n", name.c_str());
  return 0;
}

bool WriteFile(const QString& path, const QByteArray& content) {
  QFile file(path);
  const bool ok =
      file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(content) == content.size();
  if (!ok) std::fprintf(stderr, "cannot write %s: %s\n", qPrintable(path), qPrintable(file.errorString()));
  return ok;
}

int RunWindow(QApplication& application, Program& program, const CommandLine& line) {
  bool finished = false;
  const auto finish = [&] {
    if (std::exchange(finished, true)) return;
    if (!line.Screenshot.isEmpty() && !program.Window().grab().save(line.Screenshot, "PNG")) {
      std::fprintf(stderr, "cannot write %s\n", qPrintable(line.Screenshot));
    }
    if (!line.Stats.isEmpty()) WriteFile(line.Stats, RunStatsJson(program.Times(), program.RunSeconds()));
  };
  const EndSignals endSignals;
  QObject::connect(&endSignals, &EndSignals::EndWanted, &application, [&] {
    finish();
    program.Window().close();
    QApplication::quit();
  });
  program.Window().show();
  if (line.Start) {
    QTimer::singleShot(0, &program.Window(), [&] { program.Window().StartButton_Click(); });
  }
  if (line.QuitAfterSeconds) {
    QTimer::singleShot(static_cast<int>(*line.QuitAfterSeconds * 1000), &application, [&] {
      finish();
      program.Window().close();
      QApplication::quit();
    });
  }
  const int status = QApplication::exec();
  finish();  // the window may have been closed before its time
  return status != 0 || !line.Start || !program.FailedToRun() || !program.Unattended() ? status : kNoDevice;
}

}  // namespace

int main(int argc, char** argv) {
  QStringList arguments;
  for (int i = 0; i < argc; ++i) arguments.append(QString::fromLocal8Bit(argv[i]));
  QString error;
  const std::optional<CommandLine> line = ParseCommandLine(arguments, error);
  if (!line) {
    std::fprintf(stderr, "spectrino: %s\n\n%s", qPrintable(error), qPrintable(HelpText()));
    return kWrongOption;
  }
  if (line->Help) return std::fputs(qPrintable(HelpText()), stdout) < 0 ? 1 : 0;
  if (line->Version) return std::puts("spectrino " SPECTRINO_VERSION) < 0 ? 1 : 0;
  // The program's own options stay out of Qt's sight; Qt reads its environment variables.
  int qtArgc = 1;
  QApplication application(qtArgc, argv);
  QApplication::setApplicationName("spectrino");
  QApplication::setApplicationVersion(SPECTRINO_VERSION);
  ApplyTheme(application);

  Program program(*line);
  if (!program.IqFileError().isEmpty()) {
    std::fprintf(stderr, "spectrino: %s\n", qPrintable(program.IqFileError()));
    return kWrongOption;
  }
  if (line->ListDevices) return PrintDevices(program);
  if (!program.HasDevices()) {
    program.TellNoDevices();
    return kNoDevice;
  }
  program.Window().LoadWindow();
  return RunWindow(application, program, *line);
}
