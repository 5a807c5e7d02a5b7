"""spectrino-k4sim under a client that never reads, and with ports that do not exist."""
import socket
import subprocess
import sys
import time

SIM = sys.argv[1]


def resident_mib(pid):
    with open(f"/proc/{pid}/status") as status:
        return next(int(line.split()[1]) for line in status if line.startswith("VmRSS")) / 1024


def a_deaf_client_is_let_go(*faults):
    sim = subprocess.Popen([SIM, "--cat-port", "0", "--pan-port", "0", *faults], stdout=subprocess.PIPE, text=True)
    try:
        cat = int(sim.stdout.readline().split()[1])
        deaf = socket.create_connection(("127.0.0.1", cat))
        deaf.settimeout(1)
        before = resident_mib(sim.pid)
        gone, end = False, time.monotonic() + 30
        while not gone and time.monotonic() < end:
            try:
                deaf.send(b"IF;" * 4000)
            except socket.timeout:
                pass
            except OSError:
                gone = True
        assert gone, "it still has its client"
        grown = resident_mib(sim.pid) - before
        assert grown < 40, f"{grown:.0f} MiB more"
        other = socket.create_connection(("127.0.0.1", cat))
        other.settimeout(10)
        other.send(b"ID;")
        assert other.recv(100).startswith(b"ID017;")
        print(f"grown by {grown:.1f} MiB", *faults)
    finally:
        sim.kill()
        sim.wait()


for option in ("--cat-port", "--pan-port"):
    for port in ("65536", "-1", "radio", "99999999999"):
        ended = subprocess.run([SIM, f"{option}={port}"], capture_output=True, text=True, timeout=20)
        assert ended.returncode == 2 and port in ended.stderr and option in ended.stderr, (option, port, ended)

a_deaf_client_is_let_go()
a_deaf_client_is_let_go("--delay-ms", "2000")
