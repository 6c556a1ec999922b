"""A print run through a real queue: a scheduler of its own with a printer that makes PDF files, the
tool printing on it, and the finished page read back.

    print_queue.py TOOL

Status 77, with the reason, where the queue cannot be set up: it takes root and the packages of
CUPS, cups-pdf and poppler. Nothing stays behind: the scheduler has its folders, its socket and its
queue in a folder of this run, and what the printer puts elsewhere is taken away.
"""

import ctypes
import os
import pwd
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import threading

TOOL = (sys.argv + [""])[1]
LEFT_OUT = 77
PROGRAMS = ("cupsd", "lpadmin", "lp", "lpstat", "pdftotext")
BACKEND = "/usr/lib/cups/backend/cups-pdf"
MODEL = "lsb/usr/cups-pdf/CUPS-PDF_opt.ppd"
PRINTER_SETTINGS = "/etc/cups/cups-pdf.conf"
# Of this run alone: the printer keeps a log under the name.
QUEUE = f"carnetel-{os.getpid()}"
PRINTER_LOG = f"/var/log/cups/cups-pdf-{QUEUE}_log"
STEP_SECONDS = 0.05
PATIENCE_SECONDS = 60
PAUSE = threading.Event()

SCHEDULER = """
Listen {folder}/socket
Browsing No
WebInterface No
LogLevel info
DefaultAuthType None
ErrorPolicy abort-job
<Location />
  Order allow,deny
  Allow all
</Location>
<Location /admin>
  Order allow,deny
  Allow all
</Location>
<Policy default>
  JobPrivateAccess all
  JobPrivateValues none
  <Limit All>
    Order allow,deny
    Allow all
  </Limit>
</Policy>
"""

SCHEDULER_FILES = """
ServerRoot {folder}/etc
RequestRoot {folder}/spool
CacheDir {folder}/cache
StateDir {folder}/state
TempDir {folder}/spool/tmp
AccessLog {folder}/access_log
ErrorLog {folder}/error_log
PageLog {folder}/page_log
"""


def why_left_out():
    if os.geteuid() != 0:
        return "only root may start a scheduler with this printer"
    missing = [program for program in PROGRAMS if shutil.which(program) is None]
    missing += [path for path in (BACKEND, PRINTER_SETTINGS) if not os.path.exists(path)]
    return f"missing: {', '.join(missing)}" if missing else ""


def wait_until(condition, what):
    """Looks again and again until `condition` gives something true, and returns it."""
    for _ in range(int(PATIENCE_SECONDS / STEP_SECONDS)):
        result = condition()
        if result:
            return result
        PAUSE.wait(STEP_SECONDS)
    raise AssertionError(f"in vain: {what}")


def process_control(option, value):
    assert ctypes.CDLL(None, use_errno=True).prctl(option, value, 0, 0, 0) == 0


def end_with_parent():
    """Whatever ends this program ends the one that it is about to start."""
    set_death_signal = 1
    process_control(set_death_signal, signal.SIGTERM)


def take_over_orphans():
    """What a scheduler leaves running becomes this program's to wait for."""
    set_child_subreaper = 36
    process_control(set_child_subreaper, 1)


def wait_for_orphans():
    def are_gone():
        try:
            while os.waitpid(-1, os.WNOHANG)[0] != 0:
                pass
        except ChildProcessError:
            return True
        return False

    wait_until(are_gone, "an end of what the scheduler started")


class Scheduler:
    def __init__(self, folder):
        self.folder = folder
        self.socket = os.path.join(folder, "socket")
        # Filters run as another user, in the folders of the scheduler.
        os.chmod(folder, 0o755)
        os.makedirs(os.path.join(folder, "etc", "ppd"))
        for name in ("spool/tmp", "cache", "state"):
            os.makedirs(os.path.join(folder, name))
        for name, text in (("cupsd.conf", SCHEDULER), ("cups-files.conf", SCHEDULER_FILES)):
            with open(os.path.join(folder, "etc", name), "w", encoding="ascii") as file:
                file.write(text.format(folder=folder))
        self.process = subprocess.Popen(
            ["cupsd", "-f", "-c", f"{folder}/etc/cupsd.conf", "-s",
             f"{folder}/etc/cups-files.conf"],
            preexec_fn=end_with_parent, stdin=subprocess.DEVNULL)
        wait_until(self.is_ready, "a scheduler that listens")

    def is_ready(self):
        assert self.process.poll() is None, "the scheduler does not start:\n" + self.log()
        return os.path.exists(self.socket)

    def log(self):
        try:
            with open(os.path.join(self.folder, "error_log"), encoding="utf-8") as file:
                return file.read()
        except OSError:
            return ""

    def add_queue(self, environment):
        run(["lpadmin", "-p", QUEUE, "-E", "-v", "cups-pdf:/", "-m", MODEL], environment)

    def wait_idle(self, environment):
        wait_until(lambda: not run(["lpstat", "-o"], environment), "an end of all jobs")

    def close(self):
        self.process.terminate()
        try:
            self.process.wait(timeout=PATIENCE_SECONDS)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
        wait_for_orphans()
        if os.path.exists(PRINTER_LOG):
            os.remove(PRINTER_LOG)


def run(command, environment):
    done = subprocess.run(command, env=environment, capture_output=True, text=True, check=False,
                          timeout=PATIENCE_SECONDS)
    assert done.returncode == 0, f"{command}: {done.stdout}{done.stderr}"
    return done.stdout


class Printouts:
    """The folder in which the printer leaves finished files, and this run's files in it."""

    def __init__(self, mark):
        self.mark = mark
        user = pwd.getpwuid(os.geteuid())
        with open(PRINTER_SETTINGS, encoding="utf-8") as file:
            found = re.search(r"^Out\s+(\S+)", file.read(), re.MULTILINE)
        pattern = found.group(1) if found else "/var/spool/cups-pdf/${USER}"
        self.folder = pattern.replace("${HOME}", user.pw_dir).replace("${USER}", user.pw_name)
        self.was_there = os.path.isdir(self.folder)

    def paths(self):
        names = os.listdir(self.folder) if os.path.isdir(self.folder) else []
        return [os.path.join(self.folder, name) for name in names if self.mark in name]

    def take(self):
        """The text of the finished file, which then goes."""
        paths = wait_until(self.paths, f"a printout of {self.mark} in {self.folder}")
        assert len(paths) == 1, paths
        text = run(["pdftotext", "-layout", paths[0], "-"], None)
        os.remove(paths[0])
        return text

    def close(self):
        for path in self.paths():
            os.remove(path)
        if not self.was_there and os.path.isdir(self.folder) and not os.listdir(self.folder):
            os.rmdir(self.folder)


class Run:
    def __init__(self, folder):
        self.folder = folder
        self.mark = "IMPRIME" + os.path.basename(folder)[-8:]
        self.environment = {
            "PATH": os.environ.get("PATH", os.defpath), "LC_ALL": "C.UTF-8", "HOME": folder,
            "CARNETEL_HOME": folder, "CARNETEL_PROFILE": os.path.join(folder, "profile.ini"),
            "CUPS_SERVER": os.path.join(folder, "socket")}
        self.command = [TOOL, "-d", os.path.join(folder, self.mark)]
        self.printer_file = os.path.join(folder, "CARNETEL.INI")
        self.printouts = Printouts(self.mark)
        self.scheduler = None

    def tool(self, *words):
        return run([*self.command, *words], self.environment)

    def choose(self, printer):
        with open(self.printer_file, "w", encoding="utf-8") as file:
            file.write(f"[devices]\nPrinter={printer},CUPS-PDF,cups-pdf:/\n")

    def expect_no_printer(self):
        done = subprocess.run([*self.command, "print", "--scope", "file"], env=self.environment,
                              capture_output=True, text=True, check=False,
                              timeout=PATIENCE_SECONDS)
        assert (done.returncode, done.stdout) == (1, ""), done
        assert done.stderr.endswith("Erreur : Périphérique inaccessible !\n"), done
        left = [name for name in os.listdir(self.folder) if name.endswith(".pdf")]
        assert not left, left

    def expect_pages(self, count, *expected):
        """`expected` are the lines of each page, the blanks between their words aside."""
        # The job ends when its file is whole.
        self.scheduler.wait_idle(self.environment)
        text = self.printouts.take()
        pages = [[" ".join(line.split()) for line in page.splitlines() if line.strip()]
                 for page in text.split("\f") if page.strip()]
        assert len(pages) == count, text
        assert pages == list(expected), f"{pages} instead of {expected}"

    def make_directory(self):
        self.tool("create")
        for company, town in (("Électricité Dupont", "Évry"), ("Gîte du Pré", "Mâcon"),
                              ("Œillet", "Lyon")):
            self.tool("add", f"Ste1={company}".replace("Œ", "OE"), f"Ville={town}")
        self.tool("layout", "set", "Ste1:20", "Ville:10")

    def prints(self):
        heading = "STE1 VILLE"
        # One empty line and the heading leave two lines for cards on a page of four.
        page = ["--scope", "file", "--mode", "list", "--lines", "4", "--top", "60", "--left", "80"]
        self.choose(QUEUE)
        assert self.tool("print", *page) == "3 fiches imprimées\n"
        self.expect_pages(2, [heading, "Électricité Dupont Évry", "Gîte du Pré Mâcon"],
                          [heading, "OEillet Lyon"])

    def prints_on_the_systems_own(self):
        os.remove(self.printer_file)
        self.expect_no_printer()
        run(["lpadmin", "-d", QUEUE], self.environment)
        printed = self.tool("--json", "print", "--mode", "card", "--row", "2", "--lines", "64")
        assert printed == '{"cards":1,"pages":1}\n', printed
        labels = "Quali Preno Nom Ste1 Ste2 Adr1 Adr2 CP Ville Pays Tel1 Tel2 Fax Modem Mtel Ref1 " \
                 "Ref2 Ref3 Ref4 Ref5 Ref6 Notes"
        filled = {"Ste1": "Ste1 Gîte du Pré", "Ville": "Ville Mâcon"}
        self.expect_pages(1, [filled.get(label, label) for label in labels.split()])

    def run(self):
        self.make_directory()
        self.expect_no_printer()
        self.scheduler = Scheduler(self.folder)
        try:
            self.scheduler.add_queue(self.environment)
            self.choose("carnetel-no-such-queue")
            self.expect_no_printer()
            self.prints()
            self.prints_on_the_systems_own()
        except BaseException:
            print(self.scheduler.log(), file=sys.stderr)
            raise
        finally:
            self.scheduler.close()
            self.printouts.close()


def main():
    reason = why_left_out()
    if reason:
        print("left out:", reason)
        return LEFT_OUT
    take_over_orphans()
    folder = tempfile.mkdtemp(prefix="carnetel-print-")
    try:
        Run(folder).run()
    finally:
        shutil.rmtree(folder)
    return 0


if __name__ == "__main__":
    sys.exit(main())
