"""Reads the running app through AT-SPI, as a screen reader would: every control on the
focus screen, the end dialog and the review sheet has a Chinese name and a role, and buttons
drawn in different ways (sidebar rows, the start button, the wander signal) work when pressed
through the accessibility interface."""

import re
import sys
import time

import pyatspi

CONTROL_ROLES = {
    pyatspi.ROLE_PUSH_BUTTON: "button",
    pyatspi.ROLE_TOGGLE_BUTTON: "toggle",
    pyatspi.ROLE_CHECK_BOX: "switch",
    pyatspi.ROLE_SLIDER: "slider",
    pyatspi.ROLE_ENTRY: "field",
    pyatspi.ROLE_TEXT: "field",
    pyatspi.ROLE_COMBO_BOX: "picker",
}
CJK = re.compile(r"[\u4e00-\u9fff]")
failures = []


def wait_for(what, probe, seconds=30.0):
    """Polls the live app until `probe` gives something; the app runs on its own clock."""
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        found = probe()
        if found:
            return found
        time.sleep(0.2)
    sys.exit(f"gave up waiting for {what}")


def app_root():
    desktop = pyatspi.Registry.getDesktop(0)
    for i in range(desktop.childCount):
        child = desktop.getChildAtIndex(i)
        if child is not None and "quillmere" in (child.name or "").lower():
            return child
    return None


def showing(node):
    try:
        return node.getState().contains(pyatspi.STATE_SHOWING)
    except Exception:
        return False


def controls(root):
    """Every showing control under root, as (role, name, node)."""
    out = []

    def walk(node, depth=0):
        if node is None or depth > 60:
            return
        try:
            role = node.getRole()
            count = node.childCount
        except Exception:
            return
        if role in CONTROL_ROLES and showing(node):
            out.append((CONTROL_ROLES[role], node.name or "", node))
        for i in range(count):
            walk(node.getChildAtIndex(i), depth + 1)

    walk(root)
    return out


def check_named(screen, found, expected_names):
    if not found:
        failures.append(f"{screen}: no controls found")
    for role, name, _ in found:
        if not CJK.search(name):
            failures.append(f"{screen}: a {role} without a Chinese name ({name!r})")
    names = {name for _, name, _ in found}
    for expected in expected_names:
        if not any(expected in name for name in names):
            failures.append(f"{screen}: no control named {expected!r}; have {sorted(names)}")
    roles = {role for role, _, _ in found}
    return roles


def press(root, name):
    for role, control_name, node in controls(root):
        if control_name == name:
            action = node.queryAction()
            for i in range(action.nActions):
                if action.getName(i) in ("press", "click", "Press", "activate", "toggle"):
                    action.doAction(i)
                    return
            action.doAction(0)
            return
    sys.exit(f"no control named {name!r} to press")


def named(root, name):
    return lambda: any(n == name for _, n, _ in controls(root))


root = wait_for("the app on the accessibility bus", app_root)
wait_for("the start button", named(root, "开始这一轮"))

roles = check_named("focus screen", controls(root),
                    ["开始这一轮", "本轮任务", "随专注播放", "环境音总音量", "雨声", "分钟"])
for wanted in ("button", "switch", "slider", "field", "picker"):
    if wanted not in roles:
        failures.append(f"focus screen: no {wanted} among {sorted(roles)}")

press(root, "洞察")
wait_for("another screen than focus", lambda: not named(root, "开始这一轮")())
press(root, "专注")
wait_for("the focus screen again", named(root, "开始这一轮"))

press(root, "开始这一轮")
wait_for("the round to start (a pause button)", named(root, "暂停"))
check_named("running round", controls(root), ["我走神了", "结束"])
# What the round locks is dimmed on screen, and a reader hears it as unavailable.
for _, name, node in controls(root):
    if name == "本轮任务" and node.getState().contains(pyatspi.STATE_SENSITIVE):
        failures.append("running round: the locked task picker is said to be available")
press(root, "我走神了，0 次")
wait_for("the wander to be counted", named(root, "我走神了，1 次"))

press(root, "结束")
wait_for("the end dialog", named(root, "结束并记录"))
check_named("end dialog", controls(root), ["结束并记录", "放弃本轮", "返回继续专注", "继续专注"])

press(root, "结束并记录")
wait_for("the review sheet", named(root, "保存复盘"))
check_named("review sheet", controls(root),
            ["保存复盘", "放弃且不保存", "整体专注程度 5", "结束时的精力 1", "一句话记录"])

for failure in failures:
    print("FAIL:", failure)
print(f"{len(failures)} failures")
sys.exit(1 if failures else 0)
