# SPDX-License-Identifier: GPL-3.0-or-later
"""The package's life in a clean system, as root in there (started by `run`): rights, what the desktop looks for,
scans of two users, a third without the right to, upgrade, removal, purge."""
import grp
import os
import pwd
import re
import subprocess
import sys

ROOT, PRIVATE, SAVED = "/opt/zarn/Scanner/QWD200", "/usr/lib/qwd200", "/home/ScanDoc"
ROOT_FILES = ("zip-ofd", "pdfReader", "qt_zh_CN.qm", "zarn.png", "help_qwd200.pdf")
COMMANDS = ("qwd200", "imageconvert", "ocrdoc", "zip-ofd", "pdfReader")
ENTRY = "/usr/share/applications/cn.zarn.qwd200.desktop"
METAINFO = "/usr/share/metainfo/cn.zarn.qwd200.metainfo.xml"
PACKAGE, NEWER = "/tmp/qwd200.deb", "/tmp/qwd200-newer.deb"
HERE, OUT = os.path.dirname(os.path.abspath(__file__)), "/mnt/out"
failures = []


def check(good, what, found=""):
    print(("ok      " if good else "FAILED  ") + what + (f": {found}" if found and not good else ""), flush=True)
    if not good:
        failures.append(what)


def run(*command, user=None):
    """(succeeded, everything that it printed)"""
    if user:
        command = ("runuser", "-u", user, "--", "env", f"HOME=/home/{user}", f"USER={user}", *command)
    result = subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                            check=False)
    return result.returncode == 0, result.stdout.strip()


def must(*command, **more):
    good, output = run(*command, **more)
    if not good:
        sys.exit(f"{' '.join(command)}: {output}")
    return output


def rights(path):
    """For example "2775 root:scanner"."""
    status = os.lstat(path)
    return f"{status.st_mode & 0o7777:o} {pwd.getpwuid(status.st_uid).pw_name}:{grp.getgrgid(status.st_gid).gr_name}"


def content(path):
    with open(path, "rb") as file:
        return file.read()


def write(path, text):
    with open(path, "w", encoding="utf-8") as file:
        file.write(text)


# --- what is installed ---------------------------------------------------------------------------------------

def check_rights():
    for folder in (ROOT, f"{ROOT}/scanModeFile", f"{ROOT}/tempfiles", f"{ROOT}/tempTxtFiles", SAVED):
        check(rights(folder) == "2775 root:scanner", f"{folder} belongs to the scanner's users", rights(folder))
    private = [PRIVATE] + [os.path.join(folder, name) for folder, folders, files in os.walk(PRIVATE) for name in folders + files]
    open_ones = [path for path in private if not os.path.islink(path) and rights(path) not in ("755 root:root", "644 root:root")]
    check(not open_ones, "the programs belong to root and nobody else may write them", open_ones)
    for name in ROOT_FILES:
        target = os.path.realpath(f"{ROOT}/{name}")
        check(os.path.islink(f"{ROOT}/{name}") and target == f"{PRIVATE}/{name}" and os.path.isfile(target),
              f"{ROOT}/{name} leads to the installed file")
    for command in COMMANDS:
        check(os.path.realpath(f"/usr/bin/{command}").startswith(PRIVATE), f"{command} is a command")


def check_desktop_files():
    for command in (("desktop-file-validate", ENTRY), ("appstreamcli", "validate", "--no-net", METAINFO)):
        good, output = run(*command)
        check(good, f"{command[0]} is content", output)
    icons = "/usr/share/icons/hicolor"
    for icon in ("scalable/apps/cn.zarn.qwd200.svg", "symbolic/apps/cn.zarn.qwd200-symbolic.svg", "128x128/apps/cn.zarn.qwd200.png"):
        check(os.path.isfile(f"{icons}/{icon}"), f"icon {icon}")
    # The clean system leaves manual pages out, but the package must have them.
    listed = must("dpkg-deb", "--contents", PACKAGE)
    for command in COMMANDS:
        check(f"/usr/share/man/man1/{command}.1.gz" in listed, f"manual page {command}(1)")
    check(os.path.isfile("/lib/udev/rules.d/60-qwd200.rules"), "the udev rule is in place")


COMPLETE = r"""
source /usr/share/bash-completion/bash_completion
_completion_loader "$1"
function=$(complete -p "$1" | sed 's/.* -F \([^ ]*\) .*/\1/')
"$function" "$1" "${@: -1}" "${@: -2:1}"
printf '%s\n' "${COMPREPLY[@]}"
"""


def completions(*words):
    return set(must("bash", "-c", COMPLETE, "bash", *words).split())


def check_completion():
    for command in COMMANDS[1:]:
        told = set(re.findall(r"--[a-z][a-z-]*", must(command, "--help")))
        offered = completions(command, "--")
        check(told == offered, f"completion offers the options of {command}", sorted(told ^ offered))
    check(completions("imageconvert", "--type", "") == {"jpg", "tif", "png", "bmp"}, "completion knows the file types")
    os.makedirs("/tmp/words/folder", exist_ok=True)
    write("/tmp/words/file.pdf", "")
    write("/tmp/words/file.txt", "")
    os.chdir("/tmp/words")
    check(completions("zip-ofd", "f") == {"folder"}, "completion offers folders to zip-ofd")
    check(completions("pdfReader", "f") == {"folder", "file.pdf"}, "completion offers documents to pdfReader")
    os.chdir("/")


# --- people --------------------------------------------------------------------------------------------------

def check_people():
    for user in ("anna", "carla", "bob"):
        must("useradd", "--create-home", "--shell", "/bin/bash", user)
    for user in ("anna", "carla"):
        must("usermod", "-aG", "scanner", user)
    desk("anna", "scan", "manual")
    for path in (f"{ROOT}/QWD200.conf", f"{ROOT}/QWD200_path.conf"):
        check(rights(path) == "664 anna:scanner", f"{path} is shared", rights(path))
    desk("carla", "scan")
    saved = [os.path.join(folder, name) for folder, _, names in os.walk(SAVED) for name in names]
    owners = {rights(path) for path in saved}
    check(owners == {"664 anna:scanner", "664 carla:scanner"}, "each user's documents are open to the group", owners)
    desk("bob", "notice")


def desk(user, *steps):
    """One user's session at a display; what it prints are checks of the same form."""
    good, output = run(sys.executable, "-B", os.path.join(HERE, "desk.py"), *steps, user=user)
    print(output)
    if not good:
        failures.append(f"{user}: {' '.join(steps)}")


# --- upgrade and removal -------------------------------------------------------------------------------------

def newer_package():
    must("dpkg-deb", "-R", PACKAGE, "/tmp/newer")
    control = content("/tmp/newer/DEBIAN/control").decode()
    write("/tmp/newer/DEBIAN/control", re.sub(r"^Version: (.*)$", r"Version: \1+1", control, flags=re.M))
    must("dpkg-deb", "--root-owner-group", "-b", "/tmp/newer", NEWER)


def apt(*arguments):
    output = must("apt-get", "-q", "-y", "--no-install-recommends", *arguments)
    with open(f"{OUT}/apt.log", "a", encoding="utf-8") as log:
        log.write(output + "\n")


def check_upgrade():
    settings, template = f"{ROOT}/QWD200.conf", f"{ROOT}/scanModeFile/合同"
    must("sed", "-i", "/^\\[Scan_Scan\\]/,/^\\[/s/^lightness=.*/lightness=23/", settings, user="anna")
    for ending in (".conf", "_path.conf"):
        must("cp", f"{ROOT}/QWD200{ending}", template + ending, user="anna")
    kept = [settings, f"{ROOT}/QWD200_path.conf", template + ".conf", template + "_path.conf"]
    before = {path: (content(path), rights(path)) for path in kept}
    check(b"lightness=23" in before[settings][0], "a setting is changed")
    newer_package()
    apt("install", NEWER)
    check(must("dpkg-query", "-W", "-f=${Version}", "qwd200").endswith("+1"), "the newer version is installed")
    check(before == {path: (content(path), rights(path)) for path in kept}, "settings and templates survive the upgrade")
    check_rights()
    desk("carla", "scan")


def remaining():
    """Files of the program or of its name, but for what people keep at home."""
    found = must("find", "/", "-xdev", "(", "-path", "/mnt", "-o", "-path", "/proc", "-o", "-path", "/tmp", "-o", "-path", "/home", "-o",
                 "-path", "/var/cache/apt", ")", "-prune", "-o", "(", "-iname", "*qwd200*", "-o", "-iname", "*zarn*", ")", "-print")
    return found.split("\n") if found else []


def check_removal():
    files = [path for path in must("dpkg", "-L", "qwd200").split("\n") if not os.path.isdir(path)]
    documents = sorted(os.listdir(SAVED))
    apt("remove", "qwd200")
    left = [path for path in files if os.path.lexists(path)]
    check(not left, "removal takes every installed file", left)
    check(os.path.isfile(f"{ROOT}/QWD200.conf") and os.path.isfile(f"{ROOT}/scanModeFile/合同.conf"),
          "removal leaves settings and templates")
    apt("purge", "qwd200")
    check(not remaining(), "purge leaves nothing of the program", remaining())
    check(documents and sorted(os.listdir(SAVED)) == documents, "purge leaves the documents")


def check_older_installation():
    """What the source tree's run.sh has put there gives way to the package."""
    for folder in ("lib", "scanModeFile"):
        os.makedirs(f"{ROOT}/{folder}")
    for name in ("zip-ofd", "QWD200.conf", "lib/.installed"):
        write(f"{ROOT}/{name}", "old")
    apt("install", PACKAGE)
    check(not os.path.exists(f"{ROOT}/lib") and content(f"{ROOT}/QWD200.conf") == b"old",
          "the package replaces the source tree's programs and keeps the settings")
    folder = f"{ROOT}/scanModeFile"
    check(rights(folder) == "2775 root:scanner", "the package shares the source tree's folders", rights(folder))


def check_rescued_pages():
    rescued = f"{ROOT}/tempfiles/kept/20260101-120000"
    os.makedirs(rescued)
    write(f"{rescued}/page.pnm", "P1 1 1 0")
    apt("purge", "qwd200")
    check(os.listdir(rescued) == ["page.pnm"] and os.listdir(ROOT) == ["tempfiles"], "purge leaves rescued pages, and only them")


def main():
    for stage in (check_rights, check_desktop_files, check_completion, check_people, check_upgrade, check_removal,
                  check_older_installation, check_rescued_pages):
        print(f"== {stage.__name__[6:].replace('_', ' ')}", flush=True)
        stage()
    if failures:
        sys.exit(f"{len(failures)} checks failed:\n" + "\n".join(failures))


if __name__ == "__main__":
    main()
