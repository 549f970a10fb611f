"""Live data: lines from standard input, from a TCP port and from a broker show in the window, and what is wrong with
some of them is told and harms nothing."""
import os
import shutil
import socket
import subprocess
import time

import pytest

from driver import PATIENCE, wait_for
from panel import TOLD, choose, drawing, expect_picture, properties, start, values_file

assert drawing and start  # the fixtures of all tests here

LINES = ("level.max=50", "level=20.5", "state.text=at ##.# bar", "state=7.25", "box.visible=false", "#41=4",
         "#status=1", "level.quality=1")
VALUES = {"level.max": 50, "level": 20.5, "state.text": "at ##.# bar", "state": 7.25, "box.visible": False, "#41": 4,
          "#status": 1, "level.quality": 1}


def told(studio):
    return studio.window(TOLD)["text"]


def wait_told(studio, text):
    wait_for(text, lambda: told(studio) == text)


def as_bytes(*lines):
    return "".join(line + "\n" for line in lines).encode()


def free_port():
    with socket.socket() as sought:
        sought.bind(("127.0.0.1", 0))
        return sought.getsockname()[1]


def send(port, data):
    with socket.create_connection(("127.0.0.1", port), timeout=PATIENCE) as guest:
        guest.sendall(data)


def write(studio, data):
    studio.process.stdin.write(data)
    studio.process.stdin.flush()


def test_standard_input_drives_the_panel(start, drawing, tmp_path):
    studio = start(drawing, "-", stdin=subprocess.PIPE)
    assert told(studio) == "Live values: 0"
    write(studio, as_bytes(*LINES))
    wait_told(studio, "Live values: 8")
    expect_picture(studio, drawing, tmp_path, "--values", values_file(tmp_path, VALUES))
    choose(studio, "level")
    assert properties(studio)["value"] == "20.5"
    write(studio, as_bytes("level=30"))
    wait_for("the new value", lambda: properties(studio)["value"] == "30")
    expect_picture(studio, drawing, tmp_path, "--values", values_file(tmp_path, {**VALUES, "level": 30}))
    assert studio.close() == 0


def test_bad_lines_are_counted_and_the_next_good_one_is_taken(start, drawing, tmp_path):
    studio = start(drawing, "-", stdin=subprocess.PIPE)
    write(studio, as_bytes("hello", "level=much", "level=\u00e9") + b"level=\xff\n" + as_bytes("x" * 5000, "levle=5"))
    wait_told(studio, "Live values: 0, bad lines: 6. The last: levle: no element of the drawing has the identifier "
                      "'levle'; did you mean 'level'?")
    write(studio, as_bytes("level=4.5"))
    wait_for("the value", lambda: told(studio).startswith("Live values: 1, bad lines: 6."))
    expect_picture(studio, drawing, tmp_path, "--value", "level=4.5")


def test_the_end_of_the_input_leaves_the_window_as_it_is(start, drawing, tmp_path):
    studio = start(drawing, "-", stdin=subprocess.PIPE)
    write(studio, b"level=4.5")  # a last line without its end
    studio.process.stdin.close()
    wait_told(studio, "Live values: 1")
    expect_picture(studio, drawing, tmp_path, "--value", "level=4.5")
    assert studio.close() == 0


def test_a_port_drives_the_panel(start, drawing, tmp_path):
    port = free_port()
    studio = start(drawing, "--listen", str(port))
    assert told(studio) == f"Listens on port {port}."
    send(port, as_bytes(*LINES))
    wait_told(studio, "Live values: 8")
    expect_picture(studio, drawing, tmp_path, "--values", values_file(tmp_path, VALUES))
    send(port, as_bytes("level=30"))  # another guest
    wait_told(studio, "Live values: 9")
    assert studio.close() == 0


def test_a_flood_is_taken_whole_and_the_window_answers(start, drawing, tmp_path):
    port = free_port()
    studio = start(drawing, "--listen", str(port))
    send(port, as_bytes(*(f"level={n % 100 / 10}" for n in range(50000)), "level=4.5"))
    wait_told(studio, "Live values: 50001")
    expect_picture(studio, drawing, tmp_path, "--value", "level=4.5")


def test_a_port_that_is_taken_is_told(start, drawing):
    with socket.socket() as taken:
        taken.bind(("127.0.0.1", 0))
        taken.listen()
        port = taken.getsockname()[1]
        studio = start(drawing, "--listen", str(port))
        assert f"cannot listen at 127.0.0.1:{port}" in told(studio)


@pytest.fixture
def broker(tmp_path):
    """A broker on a port of this machine."""
    program = shutil.which("mosquitto", path=os.environ["PATH"] + ":/usr/sbin")
    assert program, "scripts/setup.sh installs it"
    port = free_port()
    with open(tmp_path / "broker.txt", "wb") as log:
        process = subprocess.Popen([program, "-p", str(port)], stdin=subprocess.DEVNULL, stdout=log, stderr=log)
    yield port
    process.terminate()
    process.wait(PATIENCE)


def publish(port, topic, value):
    return subprocess.run(["mosquitto_pub", "-p", str(port), "-t", topic, "-m", value, "-r"], check=False,
                          timeout=PATIENCE, stderr=subprocess.DEVNULL).returncode == 0


def test_a_broker_drives_the_panel(start, drawing, tmp_path, broker):
    wait_for("the broker", lambda: publish(broker, "level", "4.5"))
    words = ["mosquitto_sub", "-p", str(broker), "-t", "level", "-t", "state.text", "-F", "%t=%p"]
    with subprocess.Popen(words, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE) as subscriber:
        studio = start(drawing, "-", stdin=subscriber.stdout)
        wait_told(studio, "Live values: 1")
        expect_picture(studio, drawing, tmp_path, "--value", "level=4.5")
        assert publish(broker, "level", "8.5")
        assert publish(broker, "state.text", "on")
        wait_told(studio, "Live values: 3")
        expect_picture(studio, drawing, tmp_path, "--value", "level=8.5", "--text", "state=on")
        subscriber.terminate()
    time.sleep(0.5)
    assert studio.close() == 0
