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
#include "sim/bridge/RigctldFollower.h"

namespace {

/// Nobody watches: what would be shown is a line of standard error.
class PlainNotifier final : public spectrino::Notifier {
 public:
  void ShowMessage(std::string_view, std::string_view text, spectrino::Severity,
                   const spectrino::Cure& cure) override {
    Say(text);
    if (!cure.Text.empty()) Say(cure.Text);
  }
  void ShowStatus(std::string_view text) override { Say(text); }
  void Log(spectrino::LogArea, std::string_view text) override { Say(text); }

 private:
  static void Say(std::string_view text) {
    std::fprintf(stderr, "spectrino-bridge: %.*s\n", static_cast<int>(text.size()), text.data());
  }
};

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
  line.addOptions({{"flrig", "follow and tune the radio of an flrig", "host:port"},
                   {"rigctld", "follow and tune the radio of a rigctld", "host:port"}});
  line.process(application);

  PlainNotifier user;
  PosixSettingsFile file(DefaultSettingsFolder());
  SettingsStore store(file, user);
  store.WriteInBackground([&] {
    QMetaObject::invokeMethod(
        &application, [&] { store.Collect(); }, Qt::QueuedConnection);
  });
  BridgeService service;
  std::unique_ptr<RadioFollower> radio;
  std::unique_ptr<BridgedRadio> bridged;
  for (const char* program : {"flrig", "rigctld"}) {
    if (!line.isSet(program)) continue;
    const auto endpoint = ParseEndpoint(line.value(program).toStdString());
    if (!endpoint) return Fail(QString("--%1 needs host:port").arg(program));
    if (std::string_view(program) == "flrig")
      radio = std::make_unique<FlrigFollower>(QString::fromStdString(endpoint->Host), endpoint->Port);
    else
      radio = std::make_unique<RigctldFollower>(*endpoint);
    bridged = std::make_unique<BridgedRadio>(service, *radio, store);
  }
  if (const QString why = service.Serve(); !why.isEmpty()) return Fail(why);
  std::printf("READY\n");
  std::fflush(stdout);
  return QCoreApplication::exec();
}
