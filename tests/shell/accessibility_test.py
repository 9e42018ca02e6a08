#!/usr/bin/python3
"""The real Tallyvox as a screen reader sees it, through AT-SPI, with no coordinates.

Run on a display (tests/with-xvfb.sh) and a private session bus (dbus-run-session):
    accessibility_test.py BUILD_BIN_DIR
It starts the accessibility bus and the program in a sandbox, finds the main window's
controls by role and name, opens Preferences from the File menu, changes a setting and
closes the window with Esc, chooses two files in the Open dialog by keyboard, and reads
the progress and the final status. Prints QtTest-style PASS/FAIL/SKIP lines.
"""

import os
import plistlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time

NAME = "AccessibilityTest"
HELP_TEXT = ("Use File > Open, drop one or more files on this window, or open them with "
             "Tallyvox from the file manager to extract words.")


def skip(reason):
    print(f"SKIP   : {NAME}: {reason}")
    sys.exit(0)


APP = None


def fail(message):
    print(f"FAIL!  : {NAME}: {message}")
    if APP is not None:
        try:  # what the application shows, to see why
            shown = [f"{n.getRoleName()} {n.name!r}" for n in walk(APP)
                     if n.getState().contains(pyatspi.STATE_SHOWING) and n.name]
            print("   Showing: " + "; ".join(shown))
        except Exception:
            pass
    sys.exit(1)


try:
    import pyatspi
except ImportError:
    skip("python3-pyatspi is not installed (scripts/install-deps.sh installs it)")


def wait_for(what, probe, seconds=15.0):
    """probe() until it gives something true; fails the test after seconds."""
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        try:
            found = probe()
        except Exception:  # the tree changes while it is walked
            found = None
        if found:
            return found
        time.sleep(0.05)
    fail(f"timed out waiting for {what}")


def walk(node, depth=0):
    if node is None or depth > 20:
        return
    yield node
    for i in range(node.childCount):
        yield from walk(node.getChildAtIndex(i), depth + 1)


def find(root, role, name=None, showing=False):
    for node in walk(root):
        if node.getRole() != role:
            continue
        if name is not None and node.name != name:
            continue
        if showing and not node.getState().contains(pyatspi.STATE_SHOWING):
            continue
        return node
    return None


def application():
    for app in pyatspi.Registry.getDesktop(0):
        if app is not None and app.name == "Tallyvox":
            return app
    return None


def key(*keys):
    subprocess.run(["xdotool", "key", "--clearmodifiers", *keys], check=True)


def type_text(text):
    subprocess.run(["xdotool", "type", "--delay", "20", text], check=True)


def press(node):
    action = node.queryAction()
    for i in range(action.nActions):
        if action.getName(i) in ("press", "click", "Press", "toggle", "Toggle", "showMenu"):
            action.doAction(i)
            return
    action.doAction(0)


def main():
    if len(sys.argv) != 2:
        fail("usage: accessibility_test.py BUILD_BIN_DIR")
    program = os.path.join(sys.argv[1], "tallyvox")
    if not os.environ.get("DISPLAY") or not os.environ.get("DBUS_SESSION_BUS_ADDRESS"):
        fail("needs a display and a private session bus: tests/with-xvfb.sh dbus-run-session --")
    if shutil.which("xdotool") is None:
        fail("xdotool is not installed (scripts/install-deps.sh installs it)")
    launcher = "/usr/libexec/at-spi-bus-launcher"
    if not os.path.exists(launcher):
        fail("at-spi2-core is not installed (scripts/install-deps.sh installs it)")

    root = tempfile.mkdtemp(prefix="tallyvox-a11y-")
    home = os.path.join(root, "home")
    env = dict(os.environ,
               HOME=home,
               XDG_CONFIG_HOME=os.path.join(root, "config"),
               XDG_DATA_HOME=os.path.join(root, "data"),
               XDG_DATA_DIRS=os.path.join(root, "data"),
               TMPDIR=os.path.join(root, "tmp"),
               XDG_RUNTIME_DIR=os.path.join(root, "runtime"),
               QT_QPA_PLATFORM="xcb",
               QT_ACCESSIBILITY="1",
               QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
               TALLYVOX_JOBS="1",
               TALLYVOX_PROGRESS_MS="0")
    for folder in ("home", "config", "data/applications", "tmp", "runtime"):
        os.makedirs(os.path.join(root, folder), mode=0o700, exist_ok=True)
    # The text editor: records each list it is handed.
    record = os.path.join(root, "opened")
    editor = os.path.join(root, "editor.sh")
    with open(editor, "w") as f:
        f.write(f'#!/bin/sh\nfor f; do echo "$f" >> "{record}"; done\n')
    os.chmod(editor, 0o755)
    with open(os.path.join(root, "data/applications/recorder.desktop"), "w") as f:
        f.write("[Desktop Entry]\nType=Application\nName=Recorder\n"
                f"Exec={editor} %F\nMimeType=text/plain;\n")
    with open(os.path.join(root, "config/mimeapps.list"), "w") as f:
        f.write("[Default Applications]\ntext/plain=recorder.desktop\n")
    # Two documents, the first large enough for the run to be seen going.
    with open(os.path.join(home, "first.txt"), "w") as f:
        f.write(" ".join(f"w{i}" for i in range(600000)))
    with open(os.path.join(home, "second.txt"), "w") as f:
        f.write("alpha beta beta\n")

    # The accessibility bus lives in the sandbox's runtime folder, with the system's data
    # (its GSettings schemas); it and the daemon it starts end with the test.
    bus = subprocess.Popen([launcher, "--launch-immediately"],
                           env=dict(env, XDG_DATA_DIRS=os.environ.get(
                               "XDG_DATA_DIRS", "/usr/local/share:/usr/share")),
                           start_new_session=True)
    app_process = None
    try:
        time.sleep(0.5)
        app_process = subprocess.Popen([program], env=env)
        # A server that has only just said it is ready may still turn the first client away.
        time.sleep(1)
        if app_process.poll() is not None:
            app_process = subprocess.Popen([program], env=env)
        global APP
        app = APP = wait_for("Tallyvox on the accessibility bus", application)

        # The main window's controls, by role and name.
        frame = wait_for("the main window", lambda: find(app, pyatspi.ROLE_FRAME, "Tallyvox"))
        wait_for("the drop area", lambda: find(frame, pyatspi.ROLE_LABEL, "Drop documents here"))
        status = wait_for("the status line", lambda: find(frame, pyatspi.ROLE_LABEL, HELP_TEXT))
        progress = find(frame, pyatspi.ROLE_PROGRESS_BAR, "Files begun")
        stop = find(frame, pyatspi.ROLE_PUSH_BUTTON, "Stop")
        if progress is None or stop is None:
            fail("the progress bar \"Files begun\" or the Stop button is missing")
        for label in ("File", "Help", "Open...", "Preferences...", "Quit", "Tallyvox Help"):
            if find(frame, pyatspi.ROLE_MENU_ITEM, label) is None:
                fail(f"no menu item \"{label}\"")
        print(f"PASS   : {NAME}::mainWindowControls()")

        # Preferences: a dialog whose controls carry their labels' names.
        press(find(frame, pyatspi.ROLE_MENU_ITEM, "Preferences..."))
        dialog = wait_for("the Preferences dialog",
                          lambda: find(app, pyatspi.ROLE_DIALOG, "Tallyvox Preferences",
                                       showing=True))
        for name in ("Sort words", "Show counts as"):
            if find(dialog, pyatspi.ROLE_COMBO_BOX, name) is None:
                fail(f"no pop-up named \"{name}\" in Preferences: " + ", ".join(
                    f"{n.getRoleName()} {n.name!r}" for n in walk(dialog)))
        box = find(dialog, pyatspi.ROLE_CHECK_BOX, "Include frequency")
        if box is None:
            fail("no check box \"Include frequency\"")
        was = box.getState().contains(pyatspi.STATE_CHECKED)
        press(box)
        wait_for("the check box to change",
                 lambda: box.getState().contains(pyatspi.STATE_CHECKED) != was)
        settings = os.path.join(root, "config", "Okaluna Software", "Tallyvox.plist")

        def stored():
            with open(settings, "rb") as f:
                return plistlib.load(f).get("IncludeFrequency") == (not was)
        wait_for("the setting to be stored", stored)
        wait_for("the dialog to have the focus",
                 lambda: dialog.getState().contains(pyatspi.STATE_ACTIVE))
        key("Escape")
        wait_for("the Preferences dialog to close",
                 lambda: find(app, pyatspi.ROLE_DIALOG, "Tallyvox Preferences",
                              showing=True) is None)
        print(f"PASS   : {NAME}::preferencesByKeyboard()")

        # File > Open by keyboard: the dialog starts in the home folder.
        wait_for("the main window to have the focus",
                 lambda: frame.getState().contains(pyatspi.STATE_ACTIVE))
        key("ctrl+o")
        opener = wait_for("the Open dialog",
                          lambda: find(app, pyatspi.ROLE_DIALOG, showing=True))
        wait_for("the Open dialog to have the focus",
                 lambda: opener.getState().contains(pyatspi.STATE_ACTIVE))
        type_text('"first.txt" "second.txt"')
        key("Return")

        # The run: the bar's value and the file shown, then the final status.
        seen_values = set()
        seen_status = set()

        def run_over():
            if progress.getState().contains(pyatspi.STATE_SHOWING):
                seen_values.add(int(progress.queryValue().currentValue))
            seen_status.add(status.name)
            return (seen_values and status.name == HELP_TEXT
                    and not progress.getState().contains(pyatspi.STATE_SHOWING))
        wait_for("the run to end", run_over, seconds=60)
        if not seen_values:
            fail("the progress bar never showed")
        if "File: first.txt" not in seen_status:
            fail(f"the status line never said \"File: first.txt\": {sorted(seen_status)}")
        opened = wait_for("both lists in the editor",
                          lambda: os.path.exists(record) and
                          len(open(record).read().splitlines()) == 2 and open(record).read())
        names = [os.path.basename(line) for line in opened.splitlines()]
        if names != ["first.txt.txt", "second.txt.txt"]:
            fail(f"the editor was handed {names}")
        print(f"PASS   : {NAME}::batchThroughTheOpenDialog() progress values {sorted(seen_values)}")
    finally:
        if app_process is not None:
            app_process.kill()
            app_process.wait()
        os.killpg(bus.pid, signal.SIGTERM)
        bus.wait()
        shutil.rmtree(root, ignore_errors=True)
    print(f"Totals: 3 passed, 0 failed, 0 skipped")


if __name__ == "__main__":
    main()
