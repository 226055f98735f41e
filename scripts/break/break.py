#!/usr/bin/env python3
"""Breaks the client on purpose and counts what was told, kept and lost.

    scripts/break/break.py BIN [kills|faults|disk|replaced]... [--most N] [--seed N]

BIN is a build's folder of programs. Each attack plays a command on a tree of its own up to its last answer, and then
breaks it off: `kills` ends the process at each of its file calls, `faults` has the Nth of its writes fail with EIO or
ENOSPC, `disk` fills the disk under tree and home, `replaced` replaces or removes the store under the open client.
Behind it a new client is started, and what the screen, the list of 控え and the tables hold is compared with what was
there and what was typed. Wants python3 and strace, the right to trace, and for `disk` the right to mount.
"""
import argparse
import glob
import json
import os
import re
import shutil
import signal
import sqlite3
import subprocess
import sys
import tempfile
import time

NOW = "20261120 100512"
OFFER = "前回の入力内容が残っています。復元しますか？"
OLD, NEW = "元の枠の摘要", "新しく打った摘要"
FILE_CALLS = ("write,pwrite64,pwritev,fsync,fdatasync,ftruncate,fallocate,rename,renameat,renameat2,unlink,unlinkat,"
              "link,linkat,openat,copy_file_range,sendfile,mkdir,mkdirat,chmod,fchmod,utimensat,close")
# Not "write", by which the client answers its driver.
WRITES = "pwrite64,fsync,fdatasync,ftruncate,fallocate,rename,renameat,renameat2,unlink,unlinkat"


class Client:
    def __init__(self, bins, root, home):
        env = dict(os.environ, XDG_STATE_HOME=home, XDG_RUNTIME_DIR=home, QT_QPA_PLATFORM="offscreen")
        self.process = subprocess.Popen(
            [bins + "/katsudo-drive", "--root", root, "--login", "sato", "--computer", "PC1", "--now", NOW],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, env=env)

    def send(self, **command):
        self.process.stdin.write((json.dumps(command, ensure_ascii=False) + "\n").encode())
        self.process.stdin.flush()

    def play(self, **command):
        """The answer; an empty one when the client is gone."""
        try:
            self.send(**command)
            line = self.process.stdout.readline()
        except (BrokenPipeError, ValueError):
            line = b""
        return json.loads(line) if line else {}

    def enter(self, *gestures):
        for item, value in gestures:
            item, _, index = item.partition(":")
            place = {"index": int(index)} if index else {}
            if value is None:
                answer = self.play(do="click", item=item, **place)
            elif isinstance(value, int):
                answer = self.play(do="set", item=item, value=value, **place)
            else:
                answer = self.play(do="focus", item=item, **place)
                if value:
                    answer = self.play(do="type", text=value)
            if not answer.get("ok"):
                raise RuntimeError(f"{item}: {answer}")

    def items(self):
        return self.play(do="state").get("items", {})

    def told(self):
        return self.items().get("結果", {}).get("caption", "")

    def end(self):
        self.process.kill()
        self.process.wait()


def fill(client, memo):
    client.enter(("担当者コード", "1"), ("相手先略称", ""), ("opb_発信区分:0", None), ("opb_応対方法:0", None),
                 ("opb_要件分類:0", None), ("対応分類:0", 1), ("相手先略称", "壊れ物商会"), ("営業活動摘要", memo))


def load(client):
    client.enter(("担当者コード", "1"), ("相手先略称", ""), ("相手先FAX", ""))


def confirm(client):
    client.enter(("btn_登録", None))


def ready_new(client):
    client.enter(("開始時刻時", "13"), ("終了時刻時", "14"))
    fill(client, NEW)
    confirm(client)


def ready_change(client):
    load(client)
    client.enter(("営業活動摘要", NEW))
    confirm(client)


def ready_other_end(client):
    load(client)
    client.enter(("営業活動摘要", NEW), ("終了時刻分", "45"), ("相手先略称", ""), ("相手先FAX", ""))
    if client.play(do="click", item="btn_登録").get("window") != "msg登録確認":
        client.enter(("btn_登録", None))


def ready_delete(client):
    load(client)
    client.enter(("btn_削除", None))


def ready_move(command):
    def ready(client):
        load(client)
        client.enter(("btn_移動", None), ("移動開始時刻時", "15"), ("移動終了時刻時", "15"), (command, None))
    return ready


def ready_typing(client):
    client.enter(("開始時刻時", "13"), ("終了時刻時", "14"))
    fill(client, NEW)


def ready_step(client):
    client.enter(("開始時刻時", "9"), ("開始時刻分", "30"), ("終了時刻時", "10"), ("終了時刻分", "00"))
    fill(client, NEW)


def ready_quit(client):
    ready_typing(client)
    client.enter(("btn_終了", None))


def typing(client):
    client.send(do="type", text=NEW + "、続き")


def step(client):
    client.send(do="click", item="btn_30分後")


def yes(client):
    client.send(do="click", item="btn_登録")


def answer_yes(client):
    client.send(do="answer", button="Yes")


# name: how far it is played undisturbed, the last command, texts that must not get lost
ATTACKS = {
    "登録": (ready_new, yes, {NEW, OLD}),
    "修正": (ready_change, yes, {NEW, OLD}),
    "別の終了時刻で修正": (ready_other_end, yes, {NEW, OLD}),
    "削除": (ready_delete, answer_yes, {OLD}),
    "移動": (ready_move("btn_移動"), yes, {OLD}),
    "追加": (ready_move("btn_追加"), yes, {OLD}),
}
# What writes nothing into the tables; a fault of its files is told, and the screen goes on.
QUIET = {
    "打鍵": (ready_typing, typing, {NEW, OLD}),
    "別の枠へ": (ready_step, step, {NEW, OLD}),
    "終了": (ready_quit, answer_yes, {NEW, OLD}),
}


class Stage:
    """A tree with one slot and one paper, copied anew for each attack."""

    def __init__(self, bins, place):
        self.bins, self.place = bins, place
        self.pattern = place + "/pattern"
        subprocess.run([bins + "/katsudo-setup", "create", "--root", self.pattern, "--demo", "--parties", "50",
                        "--slots", "20"], check=True, stdout=subprocess.DEVNULL)
        with open(place + "/paper.txt", "w", encoding="utf-8") as paper:
            paper.write("paper " * 5000)
        home = self.fresh_home()
        client = Client(bins, self.pattern, home)
        fill(client, OLD)
        confirm(client)
        yes(client)
        client.process.stdout.readline()
        load(client)
        client.play(do="choose", item="tab_詳細", entry=1)
        client.play(do="drop", item="List付属書類", paths=[place + "/paper.txt"])
        client.end()
        assert self.memos(self.pattern) >= {OLD} and not self.stray_papers(self.pattern), "no stage"

    def fresh_home(self):
        home = self.place + "/home"
        shutil.rmtree(home, ignore_errors=True)
        os.makedirs(home, 0o700)
        return home

    def fresh_root(self):
        root = self.place + "/tree"
        if os.path.ismount(self.place):
            root = self.place + "/tree"
        shutil.rmtree(root, ignore_errors=True)
        shutil.copytree(self.pattern, root)
        return root

    def rows(self, root, sql):
        store = sqlite3.connect(root + "/data/gnrdb.accdb", timeout=20)
        try:
            return store.execute(sql).fetchall()
        finally:
            store.close()

    def memos(self, root):
        return {row[0] for row in self.rows(root, "SELECT 営業活動摘要 FROM T営業活動明細")}

    def stray_papers(self, root):
        """Papers that no slot has, rows without a copy and copies without a row; of a deleted slot they stay."""
        slots = {date + start.replace(":", "") + end.replace(":", "") + staff for staff, date, start, end in
                 self.rows(root, "SELECT 担当者コード, 日付, 開始時刻, 終了時刻 FROM T営業活動明細")}
        papers = self.rows(root, "SELECT 情報識別ID, SEQNo, 書類名 FROM M付属書類")
        named = {f"活動手帳_{owner}_{number}_{re.split(r'[/]', name)[-1]}" for owner, number, name in papers}
        copies = {os.path.basename(path) for path in glob.glob(root + "/documents/活動手帳_*")}
        ownerless = [p for p in papers if p[0] not in slots] if self.memos(root) & {OLD, NEW} else []
        return (ownerless, named - copies, copies - named) if ownerless or named != copies else ()


class Count:
    def __init__(self):
        self.attacks = self.told = self.kept = self.lost = self.silent = 0
        self.faults = []

    def fault(self, kind, words):
        setattr(self, kind, getattr(self, kind) + 1)
        self.faults.append(f"{kind}: {words}")

    def line(self, name):
        return (f"{name}: {self.attacks} attacks, told {self.told}, kept {self.kept}, "
                f"lost {self.lost}, silent {self.silent}")


def after(stage, root, home, count, words, must, accept):
    """What a new start finds. With `accept` what it offers is taken, otherwise declined."""
    client = Client(stage.bins, root, home)
    first = client.play(do="state")
    offered = (first.get("message") or {}).get("text") == OFFER
    must = set(must)
    if offered:
        client.play(do="answer", button="Yes" if accept else "No")
        if not accept:
            must.discard(NEW)
        elif client.play(do="click", item="btn_登録").get("window") == "msg登録確認":
            client.play(do="click", item="btn_登録")
    held = {client.items().get("営業活動摘要", {}).get("text", "")}
    client.play(do="click", item="btn_控え一覧")
    held |= {row["cells"][-1] for row in client.items().get("List控え", {}).get("rows", [])}
    client.end()
    stored = stage.memos(root)
    count.kept += bool(held & must)
    for text in must:
        if any(text in other for other in stored | held):
            continue
        count.fault("lost", f"{words}: {text}")
    return offered, stored


def attack(stage, name, how):
    ready, last, must = (ATTACKS | QUIET)[name]
    root, home = stage.fresh_root(), stage.fresh_home()
    client = Client(stage.bins, root, home)
    ready(client)
    tracer = None
    if how:
        tracer = subprocess.Popen(["strace", "-f", "-qq", "-p", str(client.process.pid)] + how,
                                  stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        while "TracerPid:\t0\n" in open(f"/proc/{client.process.pid}/status").read():
            time.sleep(0.002)
    last(client)
    client.process.stdout.readline()
    return client, tracer, root, home, must


def calls_of(stage, name, calls):
    """How many such calls the main thread makes in the command."""
    log = stage.place + "/calls"
    client, tracer, *_ = attack(stage, name, ["-e", "trace=" + calls, "-o", log])
    pid = client.process.pid
    client.end()
    tracer.wait()
    return sum(1 for line in open(log, errors="replace") if line.startswith(str(pid) + " ") and "(" in line)


def places(number, most):
    return range(1, number + 1) if number <= most else sorted({1 + round(i * (number - 1) / (most - 1))
                                                              for i in range(most)})


def kills(stage, most):
    count = Count()
    for name in ATTACKS | QUIET:
        number = calls_of(stage, name, FILE_CALLS)
        for place in places(number, most):
            count.attacks += 1
            how = ["-e", "trace=" + FILE_CALLS, "-e", f"inject={FILE_CALLS}:signal=SIGKILL:when={place}"]
            client, tracer, root, home, must = attack(stage, name, how)
            client.end()
            tracer.wait()
            words = f"kill {name} {place}"
            after(stage, root, home, count, words, must, accept=place % 2 == 0)
            if stray := stage.stray_papers(root):
                count.fault("lost", f"{words}: papers {stray}")
    return count


def faults(stage, most):
    count = Count()
    for name in ATTACKS:
        number = calls_of(stage, name, WRITES)
        for place in places(number, most):
            for error in ("EIO", "ENOSPC"):
                count.attacks += 1
                how = ["-e", "trace=" + WRITES, "-e", f"inject={WRITES}:error={error}:when={place}+"]
                client, tracer, root, home, must = attack(stage, name, how)
                tracer.send_signal(signal.SIGINT)
                tracer.wait()
                told = client.told()
                client.end()
                words = f"{error} {name} {place}"
                before = stage.memos(stage.pattern)
                stored = stage.memos(root)
                bad = "ません" in told
                count.told += bad
                done = {"登録": NEW in stored, "修正": NEW in stored, "別の終了時刻で修正": NEW in stored,
                        "削除": OLD not in stored}.get(name, stored >= before)
                if not bad and not done:
                    count.fault("silent", f"{words}: {told}")
                after(stage, root, home, count, words, must, accept=True)
                if stray := stage.stray_papers(root):
                    count.fault("lost", f"{words}: papers {stray}, told {told}")
    return count


def disk(stage, most):
    """Tree and home on a disk on which not a byte is left."""
    count = Count()
    full = stage.place + "/small"
    os.makedirs(full, exist_ok=True)
    for name in ("登録", "修正", "別の終了時刻で修正", "削除"):
        ready, last, must = ATTACKS[name]
        subprocess.run(["mount", "-t", "tmpfs", "-o", "size=40m", "tmpfs", full], check=True)
        try:
            count.attacks += 1
            root, home = full + "/tree", full + "/home"
            shutil.copytree(stage.pattern, root)
            os.makedirs(home, 0o700)
            client = Client(stage.bins, root, home)
            ready(client)
            with open(full + "/filler", "wb", buffering=0) as filler:
                try:
                    while True:
                        filler.write(b"x" * 4096)
                except OSError:
                    pass
            last(client)
            client.process.stdout.readline()
            told, screen = client.told(), client.items().get("営業活動摘要", {}).get("text", "")
            client.end()
            os.remove(full + "/filler")
            count.told += "ません" in told
            done = (OLD not in stage.memos(root)) if name == "削除" else (NEW in stage.memos(root))
            if not done and "ません" not in told:
                count.fault("silent", f"full disk {name}: {told}")
            after(stage, root, home, count, f"full disk {name} ({told}; {screen})", must, accept=True)
            left = glob.glob(home + "/**/*.new", recursive=True)
            if left:
                count.fault("lost", f"left behind: {left}")
        finally:
            subprocess.run(["umount", "-l", full], check=True)
    return count


def replaced(stage, most):
    """The store is replaced, or removed, under the open client."""
    count = Count()
    for name in ("登録", "修正", "削除"):
        for remove in (False, True):
            count.attacks += 1
            ready, last, must = ATTACKS[name]
            root, home = stage.fresh_root(), stage.fresh_home()
            client = Client(stage.bins, root, home)
            ready(client)
            store = root + "/data/gnrdb.accdb"
            if remove:
                os.rename(store, store + ".away")
            else:
                shutil.copy(store, store + ".copy")
                os.rename(store + ".copy", store)
            last(client)
            client.process.stdout.readline()
            told = client.told()
            client.end()
            if remove:
                os.rename(store + ".away", store)
            words = f"{'removed' if remove else 'replaced'} {name} ({told})"
            stored = stage.memos(root)
            done = (OLD not in stored) if name == "削除" else (NEW in stored)
            count.told += "ません" in told
            if done == remove or ("ません" in told) != remove:
                count.fault("silent", words)
            after(stage, root, home, count, words, must, accept=True)
    return count


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("bin")
    parser.add_argument("what", nargs="*", default=["kills", "faults", "disk", "replaced"])
    parser.add_argument("--most", type=int, default=200, help="attacks on one command and kind")
    arguments = parser.parse_args()
    bad = False
    with tempfile.TemporaryDirectory() as place:
        stage = Stage(os.path.abspath(arguments.bin), place)
        for what in arguments.what or ["kills", "faults", "disk", "replaced"]:
            count = {"kills": kills, "faults": faults, "disk": disk, "replaced": replaced}[what](stage, arguments.most)
            print(count.line(what), flush=True)
            for fault in count.faults[:40]:
                print("  " + fault, flush=True)
            bad = bad or count.lost or count.silent
    sys.exit(1 if bad else 0)


if __name__ == "__main__":
    main()
