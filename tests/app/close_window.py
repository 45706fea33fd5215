#!/usr/bin/python3
"""Closes the main window as a window manager does, on a virtual display: while the program is idle,
loads a stack, and walks over a map. Each time the program must end within a second with exit code 0.

usage: close_window.py <morvenkite> <morvenkite-demo>
"""

import os
import subprocess
import sys
import tempfile
import time

from Xlib import X, display, protocol

# A second; sanitizers, which look for leaks at the end, are given longer.
END_WITHIN_S = float(os.environ.get("MORVENKITE_END_WITHIN_S", "1"))
START_WITHIN_S = 20.0


def start_display():
    """An Xvfb on a free display number; the process and the display's name."""
    read_end, write_end = os.pipe()
    server = subprocess.Popen(
        ["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1280x800x24", "-nolisten", "tcp"],
        pass_fds=[write_end], stderr=subprocess.DEVNULL)
    os.close(write_end)
    with os.fdopen(read_end) as number:
        return server, ":" + number.readline().strip()


def main_window(disp, pid):
    """The shown top-level window of the process that has the program's title, or None."""
    pid_atom = disp.intern_atom("_NET_WM_PID")
    for window in disp.screen().root.query_tree().children:
        owner = window.get_full_property(pid_atom, X.AnyPropertyType)
        if owner is None or owner.value[0] != pid:
            continue
        shown = window.get_attributes().map_state == X.IsViewable
        if shown and "Morvenkite" in (window.get_wm_name() or ""):
            return window
    return None


def send_close(disp, window):
    event = protocol.event.ClientMessage(
        window=window, client_type=disp.intern_atom("WM_PROTOCOLS"),
        data=(32, [disp.intern_atom("WM_DELETE_WINDOW"), X.CurrentTime, 0, 0, 0]))
    window.send_event(event)
    disp.flush()


def close_while(program, arguments, display_name, log_mark):
    """Starts the program, waits for the mark in its log, closes the window; what went wrong."""
    with tempfile.TemporaryFile("w+") as log, tempfile.TemporaryDirectory() as settings:
        process = subprocess.Popen(
            [program, *arguments], stdout=log, stderr=subprocess.STDOUT,
            # The program draws nothing by OpenGL, whose driver keeps memory that a leak check can't
            # name once the driver is unloaded.
            env={**os.environ, "DISPLAY": display_name, "QT_QPA_PLATFORM": "xcb",
                 "QT_XCB_GL_INTEGRATION": "none",
                 "XDG_CONFIG_HOME": settings})
        disp = display.Display(display_name)
        deadline = time.monotonic() + START_WITHIN_S
        window = None
        while time.monotonic() < deadline and process.poll() is None:
            window = main_window(disp, process.pid)
            log.seek(0)
            if window is not None and log_mark in log.read():
                break
            time.sleep(0.005)
        else:
            process.kill()
            log.seek(0)
            return "did not come so far: " + log.read()[-400:]
        send_close(disp, window)
        closed = time.monotonic()
        try:
            code = process.wait(timeout=10)
        except subprocess.TimeoutExpired:
            process.kill()
            return "did not end"
        took = time.monotonic() - closed
        if code != 0 or took > END_WITHIN_S:
            return f"exit code {code} after {took:.2f} s"
        print(f"  ended after {took:.3f} s")
        return ""


def write_batch(folder, name, lines):
    path = os.path.join(folder, name)
    with open(path, "w", encoding="utf-8") as batch:
        batch.write("\n".join(lines) + "\n")
    return path


def main():
    program, demo = sys.argv[1:3]
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([demo, "write", folder, "--size", "160"], check=True,
                       stdout=subprocess.DEVNULL)
        with open(os.path.join(folder, "demo.bat"), encoding="utf-8") as text:
            lines = text.read().splitlines()
        before_walk = lines[:next(i for i, line in enumerate(lines)
                                  if line.lower().startswith("analyzer_exec_lcf"))]
        load = next(line for line in lines if line.lower().startswith("load_i1"))
        cases = {
            "idle": (["-e"], "Batchs in Config"),
            "loading": (["-e", "-x", "-b", write_batch(
                folder, "load.bat", [":echo loading"] + [load.replace(" new ", " add ")] * 60)],
                "echo loading"),
            "walking": (["-e", "-x", "-b", write_batch(
                folder, "walk.bat", before_walk + ["set_band_w 0", "set_band_h 0"] +
                ["analyzer_exec_LCF"] * 500)], "2da 2:"),
        }
        server, display_name = start_display()
        try:
            failed = False
            for case, (arguments, mark) in cases.items():
                print(case)
                fault = close_while(program, arguments, display_name, mark)
                if fault:
                    failed = True
                    print("  FAILED:", fault)
        finally:
            server.terminate()
            server.wait()
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
