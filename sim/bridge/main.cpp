// spectrino-bridge: the bridge on the session bus, in front of a radio that another program holds, or of
// none.
#include <QCommandLineParser>
#include <QCoreApplication>
#include <cstdio>
#include <memory>

#include "adapters/posix/PosixSettingsFile.h"
#include "platform/Notifier.h"
#include "settings/SettingsStore.h"
#include "sim/bridge/BridgeService.h"
#include "sim/bridge/BridgedRadio.h"
#include "sim/bridge/FlrigFollower.h"

namespace {

/// Nobody watches: what would be shown is a line of standard error.
class PlainNotifier final : public spectrino::Notifier {
 public:
  void ShowMessage(std::string_view, std::string_view text, spectrino::Severity) override { Say(text); }
  void ShowStatus(std::string_view text) override { Say(text); }
  void Log(spectrino::LogArea, std::string_view text) override { Say(text); }

 private:
  static void Say(std::string_view text) {
    std::fprintf(stderr, "spectrino-bridge: %.*s\n", static_cast<int>(text.size()), text.data());
  }
};

/// "host:port" with a port that exists; false otherwise.
bool ReadEndpoint(const QString& text, QString& host, quint16& port) {
  const qsizetype colon = text.lastIndexOf(':');
  bool isNumber = false;
  const uint number = text.mid(colon + 1).toUInt(&isNumber);
  host = text.left(colon);
  port = static_cast<quint16>(number);
  return colon > 0 && isNumber && number >= 1 && number <= 65535;
}

int Fail(const QString& why) {
  std::fprintf(stderr, "spectrino-bridge: %s\n", qPrintable(why));
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  using namespace spectrino;
  QCoreApplication application(argc, argv);
  QCommandLineParser line;
  line.setApplicationDescription(
      "The bridge on the session bus. Without a radio its items are set by others.");
  line.addHelpOption();
  line.addOption({"flrig", "follow and tune the radio of an flrig", "host:port"});
  line.process(application);

  PlainNotifier user;
  PosixSettingsFile file(DefaultSettingsFolder());
  SettingsStore store(file, user);
  BridgeService service;
  std::unique_ptr<RadioFollower> radio;
  std::unique_ptr<BridgedRadio> bridged;
  if (line.isSet("flrig")) {
    QString host;
    quint16 port = 0;
    if (!ReadEndpoint(line.value("flrig"), host, port)) return Fail("--flrig needs host:port");
    radio = std::make_unique<FlrigFollower>(host, port);
    bridged = std::make_unique<BridgedRadio>(service, *radio, store);
  }
  if (const QString why = service.Serve(); !why.isEmpty()) return Fail(why);
  std::printf("READY\n");
  std::fflush(stdout);
  return QCoreApplication::exec();
}
