#!/usr/bin/env python3
"""Turns the large plot's knobs at random, as the button-pressing GUI monkey cannot.

Run inside ../shared/tools/a11y_session.sh (Xvfb, D-Bus and the accessibility bus), with the
system's Python, from a scratch folder as an unprivileged user (the program saves files there):

    a11y_session.sh 42 '/usr/bin/python3 -u scripts/knob_monkey.py build/dev/app/varo 2000 5'

Sets the dials through the accessibility interface to random and hostile values (beyond their
stops, +-10^6, +-2^31), presses the nudges, "Back to design values" and the view switch, and
moves the mouse over the plot (with xdotool, where installed). Exits 1 if the program ended.
"""
import os
import random
import subprocess
import sys
import time

here = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.environ.get("VARO_A11Y_TOOLS", os.path.join(here, "..", "..", "shared", "tools")))
import a11y  # noqa: E402

BUTTONS = ["Back to design values", "Smith chart", "dB plot", "CL+1%", "CL-1%", "LL+1%", "LL-1%"]
HOSTILE = [0, 1, -1, 350, -350, 351, -351, 10**6, -10**6, 2**31 - 1, -2**31, 0.5, -0.5]


def open_large_plot(app):
    a11y.press(a11y.window(app, "Welcome"), "Start")
    time.sleep(1.5)
    a11y.press(a11y.window(app, "Design screen"), "See large plot")
    time.sleep(2)
    return a11y.window(app, "Large Plot")


def one_event(rng, plot, dials):
    r = rng.random()
    if r < 0.6 and dials:
        value = rng.choice(HOSTILE) if rng.random() < 0.3 else rng.randint(-400, 400)
        rng.choice(dials).queryValue().currentValue = value
    elif r < 0.85:
        found = a11y.find(plot, "push button", rng.choice(BUTTONS))
        if found:
            a11y.click(found[0])
    else:
        subprocess.run(["xdotool", "mousemove", str(rng.randint(0, 1600)), str(rng.randint(0, 1000))],
                       stderr=subprocess.DEVNULL)


def close_messages(app):
    for w in a11y.windows(app):
        if w.getRoleName() in ("alert", "dialog"):
            print("message:", a11y.labels(w)[:2])
            buttons = a11y.find(w, "push button")
            if buttons:
                a11y.click(buttons[0])


def main():
    exe, events, seed = os.path.abspath(sys.argv[1]), int(sys.argv[2]), int(sys.argv[3])
    rng = random.Random(seed)
    program = subprocess.Popen([exe])
    app = a11y.attach(os.path.basename(exe))
    plot = open_large_plot(app)
    dials = a11y.find(plot, "dial")
    done = 0
    for _ in range(events):
        if program.poll() is not None:
            break
        try:
            one_event(rng, plot, dials)
            done += 1
        except Exception:  # the bus may lag behind a window that just closed
            pass
        time.sleep(0.02)
        close_messages(app)
    alive = program.poll() is None
    print("knob monkey: %d events, program %s" % (done, "alive" if alive else "ended %s" % program.returncode))
    program.terminate()
    sys.exit(0 if alive else 1)


if __name__ == "__main__":
    main()
