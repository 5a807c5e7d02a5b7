// Program start: options, the parts, the window.
#include <QApplication>
#include <QBuffer>
#include <QMessageBox>
#include <cstdio>
#include <string>
#include <utility>

#include "app/CommandLine.h"
#include "app/EndSignals.h"
#include "app/OutputFile.h"
#include "app/Program.h"
#include "app/RunStats.h"
#include "app/Theme.h"

namespace {

using namespace spectrino;

constexpr int kNotWritten = 1;
constexpr int kWrongOption = 2;
constexpr int kNoDevice = 3;

int PrintDevices(Program& program) {
  for (const std::string& name : program.SourceNames()) std::printf("%s\n", name.c_str());
  return 0;
}

/// What is left behind at the end: picture and figures, then the last settings.
class Ending {
 public:
  Ending(Program& program, const CommandLine& line) : program_(program), line_(line) {}

  /// While the window still shows what it shows. The first call counts.
  void Keep() {
    if (std::exchange(kept_, true)) return;
    neverRan_ = line_.Start && program_.Unattended() && program_.FailedToRun();
    if (!line_.Screenshot.isEmpty()) {
      QByteArray png;
      QBuffer buffer(&png);
      program_.Window().grab().save(&buffer, "PNG");
      Write(line_.Screenshot, png);
    }
    if (!line_.Stats.isEmpty()) Write(line_.Stats, RunStatsJson(program_.Times(), program_.RunSeconds()));
  }
  /// After the window has closed. bySignal: the session may be ending, and nobody can answer.
  void SaveSettings(bool bySignal) {
    const std::string unsaved = program_.FinishSaving();
    if (unsaved.empty()) return;
    std::fprintf(stderr, "spectrino: %s", unsaved.c_str());
    if (!bySignal && !program_.Unattended())
      QMessageBox::warning(nullptr, "Spectrino", QString::fromStdString(unsaved));
  }
  [[nodiscard]] int Status() const { return neverRan_ ? kNoDevice : unwritten_ ? kNotWritten : 0; }

 private:
  void Write(const QString& path, const QByteArray& content) {
    const QString reason = WriteOutput(path, content);
    if (reason.isEmpty()) return;
    unwritten_ = true;
    std::fprintf(stderr, "spectrino: %s\n", qPrintable(reason));
  }

  Program& program_;
  const CommandLine& line_;
  bool kept_ = false, neverRan_ = false, unwritten_ = false;
};

int RunWindow(QApplication& application, Program& program, const CommandLine& line) {
  Ending ending(program, line);
  bool bySignal = false;
  const auto end = [&] {
    ending.Keep();
    program.Window().close();
    QApplication::quit();
  };
  const EndSignals endSignals;
  QObject::connect(&endSignals, &EndSignals::EndWanted, &application, [&] {
    bySignal = true;
    end();
  });
  program.Window().show();
  if (line.Start) {
    QTimer::singleShot(0, &program.Window(), [&] { program.Window().StartButton_Click(); });
  }
  if (program.WantsFirstSteps(line))
    QTimer::singleShot(0, &program.Window(), [&] { emit program.Window().FirstStepsWanted(); });
  if (line.QuitAfterSeconds)
    QTimer::singleShot(static_cast<int>(*line.QuitAfterSeconds * 1000), &application, end);
  const int status = QApplication::exec();
  ending.Keep();  // the window may have been closed before its time
  ending.SaveSettings(bySignal);
  return status != 0 ? status : ending.Status();
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
