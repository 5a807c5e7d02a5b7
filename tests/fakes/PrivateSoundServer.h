// A sound server of the test's own, in a temporary folder, with a cable from a player to an input.
// Never the user's server: everything it and its clients use is below the temporary folder.
#pragma once

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace spectrino {

enum class SoundServerKind { PulseAudio, PipeWire };

class PrivateSoundServer {
 public:
  using Arguments = std::vector<std::string>;

  explicit PrivateSoundServer(SoundServerKind kind = SoundServerKind::PulseAudio) : kind_(kind) {
    std::string pattern = (std::filesystem::temp_directory_path() / "sound-XXXXXX").string();
    folder_ = mkdtemp(pattern.data());
    std::filesystem::permissions(folder_, std::filesystem::perms::owner_all);
    std::filesystem::create_directory(Path("pulse"));
  }
  ~PrivateSoundServer() {
    for (const pid_t player : players_) End(player);
    Kill();
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  PrivateSoundServer(const PrivateSoundServer&) = delete;
  PrivateSoundServer& operator=(const PrivateSoundServer&) = delete;

  /// Starts the server with a sink ("cable") and the input that hears it ("iq"), both at rateHz.
  /// Empty when it answers within 10 s, else what went wrong.
  [[nodiscard]] std::string Start(int rateHz) {
    const std::string problem = StartPrograms();
    if (!problem.empty()) return problem;
    // Without "norewinds" an idle sink works in steps of 2 s, and a capture waits that long for its first
    // samples.
    const bool ready =
        LoadModule({"module-null-sink", "sink_name=cable", "format=s16le", "rate=" + std::to_string(rateHz),
                    "channels=2", kChannels, "norewinds=1"}) &&
        PlugSource();
    return ready ? "" : "no cable: " + Text("pactl.log");
  }
  /// Plugs the input in, again after UnplugSource.
  bool PlugSource() {
    std::string index;
    const bool loaded = LoadModule(
        {"module-remap-source", "master=cable.monitor", "source_name=iq", "remix=no", "channels=2",
         std::string("master_") + kChannels, kChannels, "source_properties=device.description=Receiver"},
        &index);
    receiverModule_ = index.substr(0, index.find('\n'));
    return loaded;
  }
  /// Unplugs the input.
  bool UnplugSource() { return Pactl({"unload-module", receiverModule_}); }

  /// What a program needs in its environment to find this server and no other.
  [[nodiscard]] std::map<std::string, std::string> Environment() const {
    return {{"XDG_RUNTIME_DIR", folder_},
            {"XDG_CONFIG_HOME", Path("config")},
            {"HOME", folder_},
            {"DBUS_SESSION_BUS_ADDRESS", "unix:path=" + Path("bus")},
            {"PULSE_SERVER", "unix:" + Path("pulse/native")}};
  }
  /// Points this process's own sound clients at this server, until another one does.
  void PointClientsHere() const {
    for (const auto& [name, value] : Environment()) setenv(name.c_str(), value.c_str(), 1);
  }
  [[nodiscard]] std::string Path(const std::string& name) const { return folder_ + "/" + name; }

  /// Plays interleaved 16-bit stereo samples into the sink, once, beside the test.
  [[nodiscard]] bool Play(const std::vector<std::int16_t>& samples, int rateHz,
                          const std::string& sink = "cable") {
    const std::string file = Path("play" + std::to_string(players_.size()) + ".raw");
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<const char*>(samples.data()),
               static_cast<std::streamsize>(samples.size() * sizeof(std::int16_t)));
    const pid_t player =
        Spawn({"paplay", "--raw", "--format=s16le", "--channels=2", "--channel-map=left,right",
               "--rate=" + std::to_string(rateHz), "--device=" + sink, file},
              "player.log");
    if (player > 0) players_.push_back(player);
    return player > 0;
  }

  /// Runs pactl to its end, at most 5 s; what it printed is in output.
  bool Pactl(Arguments arguments, std::string* output = nullptr) {
    arguments.insert(arguments.begin(), "pactl");
    const pid_t child = Spawn(arguments, "pactl.log");
    int status = -1;
    for (int attempt = 0; child > 0 && attempt < 500; ++attempt) {
      if (waitpid(child, &status, WNOHANG) == child) {
        if (output != nullptr) *output = Text("pactl.log");
        return status == 0;
      }
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    End(child);
    return false;
  }
  bool LoadModule(Arguments module, std::string* output = nullptr) {
    module.insert(module.begin(), "load-module");
    return Pactl(std::move(module), output);
  }

  /// The server stops answering, but stays connected.
  void Stop() const {
    if (!servers_.empty()) kill(servers_.back(), SIGSTOP);
  }
  void Continue() const {
    if (!servers_.empty()) kill(servers_.back(), SIGCONT);
  }
  void Kill() {
    for (; !servers_.empty(); servers_.pop_back()) End(servers_.back());
  }

 private:
  static void End(pid_t child) {
    if (child <= 0) return;
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
  }
  [[nodiscard]] std::string StartPrograms() {
    if (kind_ == SoundServerKind::PulseAudio) {
      std::ofstream(Path("server.pa"))
          << "load-module module-native-protocol-unix auth-anonymous=1 socket=" << Path("pulse/native")
          << "\n";
      return StartOne({"pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
                       "--realtime=no", "--high-priority=no", "--log-target=stderr", "-F", Path("server.pa")},
                      [this] { return Pactl({"info"}); });
    }
    const auto there = [this](const char* name) {
      return [path = Path(name)] { return std::filesystem::exists(path); };
    };
    for (const char* name : {"bus", "pipewire-0"}) std::filesystem::remove(Path(name));
    std::string problem = StartOne(
        {"dbus-daemon", "--session", "--nofork", "--nopidfile", "--address=unix:path=" + Path("bus")},
        there("bus"));
    if (problem.empty()) problem = StartOne({"pipewire"}, there("pipewire-0"));
    if (problem.empty()) problem = StartOne({"wireplumber"}, [] { return true; });
    if (problem.empty()) problem = StartOne({"pipewire-pulse"}, [this] { return Pactl({"info"}); });
    return problem;
  }
  /// Ends with the test's process, however that ends. Waits until the program is ready.
  [[nodiscard]] std::string StartOne(Arguments program, const std::function<bool()>& ready) {
    const std::string name = program[0];
    program.insert(program.begin(), {"setpriv", "--pdeathsig", "KILL"});
    const pid_t started = Spawn(program, name + ".log");
    if (started <= 0) return "setpriv cannot be run; is it installed?";
    servers_.push_back(started);
    for (int attempt = 0; attempt < 500; ++attempt) {
      if (ready()) return {};
      if (waitpid(started, nullptr, WNOHANG) == started) {
        servers_.pop_back();
        return name + " ended: " + Text(name + ".log");
      }
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return name + " is not ready: " + Text(name + ".log");
  }
  [[nodiscard]] std::string Text(const std::string& name) const {
    std::ostringstream text;
    text << std::ifstream(Path(name)).rdbuf();
    return text.str();
  }

  // Starts a program with this server's environment; its output goes to a file of the folder.
  [[nodiscard]] pid_t Spawn(const Arguments& arguments, const std::string& outputName) const {
    std::vector<std::string> variables{"PATH=" + std::string(std::getenv("PATH")), "LC_ALL=C.UTF-8"};
    for (const auto& [name, value] : Environment()) variables.push_back(name + "=" + value);
    const auto pointers = [](const std::vector<std::string>& texts) {
      std::vector<char*> result;
      for (const std::string& text : texts) result.push_back(const_cast<char*>(text.c_str()));
      result.push_back(nullptr);
      return result;
    };
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, Path(outputName).c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                     0600);
    posix_spawn_file_actions_adddup2(&actions, 1, 2);
    pid_t child = 0;
    const int error = posix_spawnp(&child, arguments[0].c_str(), &actions, nullptr,
                                   pointers(arguments).data(), pointers(variables).data());
    posix_spawn_file_actions_destroy(&actions);
    return error == 0 ? child : -1;
  }

  static constexpr const char* kChannels = "channel_map=front-left,front-right";

  SoundServerKind kind_;
  std::string folder_;
  std::string receiverModule_;
  std::vector<pid_t> servers_;  // what is needed first comes first
  std::vector<pid_t> players_;
};

}  // namespace spectrino
