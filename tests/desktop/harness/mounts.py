"""File systems for one test, which need no root: mounted in a namespace that only the programs see
that are started in it."""
import shlex
import subprocess

from harness.processes import own_session_that_dies_with_us

ENTER = ("unshare", "--user", "--map-current-user", "--keep-caps", "--mount")


def can_mount():
    """Whether this machine lets its users have such a namespace."""
    try:
        return subprocess.run([*ENTER, "mount", "-t", "tmpfs", "none", "/mnt"], check=False,
                              capture_output=True, timeout=20).returncode == 0
    except FileNotFoundError:
        return False


class Mounts:
    """A namespace that lives until `close`."""

    def __init__(self, environment):
        self._shell = subprocess.Popen(
            [*ENTER, "sh"], env=environment, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
            text=True, preexec_fn=own_session_that_dies_with_us)

    def run(self, *command):
        """Runs a command in the namespace, with its rights."""
        self._shell.stdin.write(f"{shlex.join(command)} >&2; echo $?\n")
        self._shell.stdin.flush()
        status = self._shell.stdout.readline().strip()
        if status != "0":
            raise AssertionError(f"{shlex.join(command)}: {status}")

    def mount(self, path, size):
        """Mounts an empty file system of `size` bytes that is in memory."""
        self.run("mount", "-t", "tmpfs", "-o", f"size={size},mode=700", "none", path)

    def remount(self, path, how):
        """`how`: "ro" or "rw"."""
        self.run("mount", "-o", "remount," + how, path)

    def command(self, *program):
        """Starts a program in the namespace, with its user's rights."""
        return ["nsenter", f"--target={self._shell.pid}", "--user", "--mount",
                "--preserve-credentials", "--", *program]

    def path(self, path):
        """Where a file of the namespace is from outside."""
        return f"/proc/{self._shell.pid}/root{path}"

    def close(self):
        self._shell.stdin.close()
        self._shell.wait(5)
        self._shell.stdout.close()
