"""spectrino-k4sim with an independent client (Hamlib's rigctl with its own back-end for the radio), with one that
never reads, and with ports that do not exist."""
import socket
import subprocess
import sys
import time

SIM = sys.argv[1]


class Simulator:
    def __enter__(self):
        return self

    def __init__(self, *options):
        self.process = subprocess.Popen([SIM, "--cat-port", "0", "--pan-port", "0", *options],
                                        stdout=subprocess.PIPE, text=True)
        word, self.cat, _ = self.process.stdout.readline().split()
        assert word == "READY"

    def __exit__(self, *_):
        self.process.terminate()
        assert self.process.wait(timeout=10) in (0, -15)
        self.process.stdout.close()

    def rigctl(self, *commands):
        return subprocess.run(["rigctl", "-m", "2047", "-r", f"127.0.0.1:{self.cat}", *commands],
                              capture_output=True, text=True, timeout=30, check=True).stdout.split()

    def connect(self, timeout):
        client = socket.create_connection(("127.0.0.1", int(self.cat)))
        client.settimeout(timeout)
        return client

    def resident_mib(self):
        with open(f"/proc/{self.process.pid}/status") as status:
            return next(int(line.split()[1]) for line in status if line.startswith("VmRSS")) / 1024


with Simulator() as sim:
    assert sim.rigctl("f", "m") == ["14074000", "USB", "2700"]
    sim.rigctl("F", "14025500", "M", "CW", "500")
    assert sim.rigctl("f", "m") == ["14025500", "CW", "500"]
    sim.rigctl("S", "1", "VFOB")
    assert sim.rigctl("s")[0] == "1"
    sim.rigctl("M", "LSB", "2400", "S", "0", "VFOA")
    assert sim.rigctl("m", "s")[:3] == ["LSB", "2400", "0"]

for faults in (), ("--delay-ms", "2000"):
    with Simulator(*faults) as sim:
        deaf = sim.connect(1)
        before = sim.resident_mib()
        gone, end = False, time.monotonic() + 30
        while not gone and time.monotonic() < end:
            try:
                deaf.send(b"IF;" * 4000)
            except socket.timeout:
                pass
            except OSError:
                gone = True
        assert gone, "it still has its client"
        assert sim.resident_mib() - before < 40
        other = sim.connect(10)
        other.send(b"ID;")
        assert other.recv(100).startswith(b"ID017;")

for option in ("--cat-port", "--pan-port"):
    for port in ("65536", "-1", "radio", "99999999999"):
        ended = subprocess.run([SIM, f"{option}={port}"], capture_output=True, text=True, timeout=20)
        assert ended.returncode == 2 and port in ended.stderr and option in ended.stderr, (option, port, ended)
