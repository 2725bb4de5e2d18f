"""Faults in a running program's system calls on files: it is killed at any of them, they fail, or
they are not answered.

The kernel hands each such call of the program, of any of its threads and libraries, to a thread
here before it is made (a seccomp filter with a listener), and that thread lets it through, fails
it, kills the program instead, or leaves it waiting.
"""
import ctypes
import errno
import fcntl
import os
import select
import signal
import socket
import struct
import subprocess
import sys
import threading

# The argument that is a path, and the one that is the directory from which a relative path starts.
PATHS = {"open": (0, None), "stat": (0, None), "lstat": (0, None), "access": (0, None),
         "mkdir": (0, None), "rmdir": (0, None), "unlink": (0, None), "rename": (0, None),
         "readlink": (0, None), "chmod": (0, None), "truncate": (0, None), "link": (0, None),
         "symlink": (1, None), "inotify_add_watch": (1, None),
         "openat": (1, 0), "openat2": (1, 0), "newfstatat": (1, 0), "statx": (1, 0),
         "faccessat": (1, 0), "faccessat2": (1, 0), "mkdirat": (1, 0), "unlinkat": (1, 0),
         "renameat": (1, 0), "renameat2": (1, 0), "readlinkat": (1, 0), "fchmodat": (1, 0),
         "linkat": (1, 0), "symlinkat": (2, 1)}
# Those whose first argument is an open file.
DESCRIPTORS = ("read", "readv", "pread64", "write", "writev", "pwrite64", "close", "fsync",
               "fdatasync", "fstat", "getdents64", "fcntl", "ftruncate", "fchmod", "flock", "lseek")

AT_FDCWD = -100
PR_SET_NO_NEW_PRIVS = 38
PIDFD_GETFD = 438   # on every processor
SECCOMP_SET_MODE_FILTER, SECCOMP_FILTER_FLAG_NEW_LISTENER = 1, 1 << 3
RET_ALLOW, RET_USER_NOTIF = 0x7FFF0000, 0x7FC00000
NOTIF_RECV, NOTIF_SEND = 0xC0502100, 0xC0182101
NOTIF_FLAG_CONTINUE = 1
NOTIFICATION = struct.Struct("=QIIiIQ6Q")
RESPONSE = struct.Struct("=QqiI")

_libc = ctypes.CDLL(None, use_errno=True)


def _numbers():
    """The numbers on this processor of the calls that it has."""
    library = ctypes.CDLL("libseccomp.so.2")
    numbers = {library.seccomp_syscall_resolve_name(name.encode()): name
               for name in (*PATHS, *DESCRIPTORS, "seccomp")}
    return {number: name for number, name in numbers.items() if number >= 0}


def _filter(numbers):
    """A program that has a listener asked about these calls. Each is followed by its own return,
    so that no jump is longer than an instruction."""
    load, equal, give = 0x20, 0x15, 0x06
    program = [(load, 0, 0, 0)]
    for number in numbers:
        program += [(equal, 0, 1, number), (give, 0, 0, RET_USER_NOTIF)]
    program.append((give, 0, 0, RET_ALLOW))
    return b"".join(struct.pack("=HBBI", *instruction) for instruction in program)


def can_listen():
    """Whether this machine lets a program's calls be intercepted."""
    calls = None
    try:
        calls = SystemCalls("/")
        subprocess.run(["true"], check=True, preexec_fn=calls.prepare)
        return bool(calls.made)
    except (OSError, subprocess.SubprocessError):
        return False
    finally:
        if calls:
            calls.close()


class Call:
    """One system call on a file of interest."""

    def __init__(self, name, path, pid, arguments):
        self.name, self.path, self.pid, self.arguments = name, path, pid, arguments

    def __repr__(self):
        return f"{self.name} {os.path.basename(self.path)}"


NO_ANSWER = object()


class Kill:
    """Ends the program before the call is made."""

    once = True

    def __call__(self, call):
        os.kill(call.pid, signal.SIGKILL)
        return NO_ANSWER


class Fail:
    """The call fails without being made; unless `once`, every call from there on does."""

    def __init__(self, error, once=True):
        self.error, self.once = error, once

    def __call__(self, call):
        return 0, -self.error

    def __repr__(self):
        return errno.errorcode[self.error]


class Memory:
    """Reads a process's memory."""

    def __init__(self):
        self._files = {}

    def read(self, pid, address, size):
        for _ in range(2):
            if pid not in self._files:
                self._files[pid] = os.open(f"/proc/{pid}/mem", os.O_RDONLY)
            data = os.pread(self._files[pid], size, address)
            if data:
                return data
            os.close(self._files.pop(pid))  # it has become another program since
        raise OSError(errno.EFAULT, "nothing to read")

    def close(self):
        for file in self._files.values():
            os.close(file)
        self._files.clear()


class SystemCalls:
    """Listens to the calls of one program, counted from the last `arm` on.

    A call counts when it concerns a file below `root`. Give `prepare` to the process's start.
    """

    def __init__(self, root):
        self.root = os.path.realpath(root)
        self.made = []
        self.write_limit = None     # in bytes; a larger write is a short one
        self._fault, self._at = None, -1
        self._silent, self._waiting, self._listener = None, [], -1
        self._lock = threading.Lock()
        self._memory = Memory()
        self._numbers = _numbers()
        self._seccomp = next(n for n, name in self._numbers.items() if name == "seccomp")
        program = _filter([number for number, name in self._numbers.items()
                           if name in PATHS or name in DESCRIPTORS])
        self._instructions = ctypes.create_string_buffer(program, len(program))
        self._program = struct.pack("=HxxxxxxQ", len(program) // 8,
                                    ctypes.addressof(self._instructions))
        self._ours, self._childs = socket.socketpair()
        self._thread = threading.Thread(target=self._listen, daemon=True)
        self._thread.start()

    def prepare(self):
        """Runs in the new process before it becomes the program."""
        _libc.prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0)
        listener = _libc.syscall(self._seccomp, SECCOMP_SET_MODE_FILTER,
                                 SECCOMP_FILTER_FLAG_NEW_LISTENER, self._program)
        if listener < 0:
            raise OSError(ctypes.get_errno(), "no listener for system calls")
        socket.send_fds(self._childs, [b"."], [listener])

    def arm(self, fault=None, at=-1):
        """Counts anew from here; `fault` strikes at call number `at`, from zero."""
        with self._lock:
            self.made, self._fault, self._at = [], fault, at

    def hold(self, folder):
        """From now on no call on a file in this folder below `root` is answered, as on a network
        file system whose server is down."""
        with self._lock:
            self._silent = os.path.realpath(folder)

    def release(self):
        """The folder answers again, also the calls that wait."""
        with self._lock:
            self._silent, waiting, self._waiting = None, self._waiting, []
        for identity in waiting:
            self._send(identity, 0, 0, NOTIF_FLAG_CONTINUE)

    @property
    def waiting(self):
        """How many calls wait."""
        with self._lock:
            return len(self._waiting)

    def close(self):
        """When the program has ended."""
        self._childs.close()    # ends the wait for a listener that never came
        self._thread.join(5)
        self._ours.close()

    def _listen(self):
        try:
            _, descriptors, _, _ = socket.recv_fds(self._ours, 1, 1)
        except OSError:
            return
        if not descriptors:
            return
        listener, = descriptors
        self._listener = listener
        waiting = select.poll()
        waiting.register(listener, select.POLLIN)
        try:
            while True:
                _, events = waiting.poll()[0]
                if not events & select.POLLIN:
                    return  # nobody is left
                self._answer_one(listener)
        finally:
            os.close(listener)
            self._memory.close()

    def _answer_one(self, listener):
        buffer = bytearray(NOTIFICATION.size)
        try:
            fcntl.ioctl(listener, NOTIF_RECV, buffer)
        except OSError:
            return  # the caller died meanwhile
        identity, pid, _, number, _, _, *arguments = NOTIFICATION.unpack(buffer)
        answer = self._judge(identity, pid, self._numbers[number], arguments)
        if answer is not NO_ANSWER:
            self._send(identity, *((*answer, 0) if answer else (0, 0, NOTIF_FLAG_CONTINUE)))

    def _send(self, identity, value, error, flags):
        try:
            fcntl.ioctl(self._listener, NOTIF_SEND,
                        bytearray(RESPONSE.pack(identity, value, error, flags)))
        except OSError as gone:
            if gone.errno != errno.ENOENT:
                print("system calls:", gone, file=sys.stderr)

    def _judge(self, identity, pid, name, arguments):
        """What the call is to return, as (value, -errno); None to let it be made, NO_ANSWER to give
        none now."""
        try:
            path = self._path(pid, name, arguments)
        except OSError:
            return None     # it will fail by itself
        if path != self.root and not path.startswith(self.root.rstrip("/") + "/"):
            return None
        with self._lock:
            index, call = len(self.made), Call(name, path, pid, arguments)
            self.made.append(call)
            if self._silent and f"{path}/".startswith(f"{self._silent}/"):
                self._waiting.append(identity)
                return NO_ANSWER
            fault = self._fault
            strikes = fault and (index == self._at or index > self._at and not fault.once)
        if strikes:
            return fault(call)
        if name == "write" and self.write_limit:
            return self._write_part(call), 0
        return None

    def _write_part(self, call):
        """Makes a write in the program's stead, of a part only; how many bytes it took."""
        # The program's own open file, so that its position moves as the program expects.
        process = os.pidfd_open(call.pid)
        file = _libc.syscall(PIDFD_GETFD, process, ctypes.c_int(call.arguments[0]), 0)
        os.close(process)
        if file < 0:
            raise OSError(ctypes.get_errno(), "no hold of the program's file")
        try:
            size = min(self.write_limit, call.arguments[2])
            return os.write(file, self._memory.read(call.pid, call.arguments[1], size))
        finally:
            os.close(file)

    def _path(self, pid, name, arguments):
        if name in DESCRIPTORS:
            return os.readlink(f"/proc/{pid}/fd/{arguments[0]}")
        path_index, directory_index = PATHS[name]
        path = os.fsdecode(self._memory.read(pid, arguments[path_index], 4096).split(b"\0", 1)[0])
        if path.startswith("/"):
            return os.path.normpath(path)
        directory = AT_FDCWD if directory_index is None else \
            ctypes.c_int(arguments[directory_index] & 0xFFFFFFFF).value
        start = "cwd" if directory == AT_FDCWD else f"fd/{directory}"
        return os.path.normpath(os.path.join(os.readlink(f"/proc/{pid}/{start}"), path))
