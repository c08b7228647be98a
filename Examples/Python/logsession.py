"""Usage sessions of a Python program, recorded by libLogSession through ctypes.

The functions do what the C functions of UTLogData.h do, under the same conditions and limits. A
text is a str, recorded as UTF-8 up to its first NUL character; an optional one may be None. A
document id is bytes or a text. What is no such thing raises TypeError before anything is recorded.

The library is loaded at the first call: from the path given to load(), else from the one in the
environment variable LOGSESSION_LIBRARY, else as the dynamic linker finds libLogSession.so.1.
"""
from __future__ import annotations

import ctypes
import enum
import os
import threading
from types import TracebackType
from typing import Optional, Type, Union

SONAME = "libLogSession.so.1"
LIBRARY_VARIABLE = "LOGSESSION_LIBRARY"

DocumentId = Union[bytes, bytearray, str]
Path = Union[str, "os.PathLike[str]"]


class LibraryNotFound(ImportError):
    """The library, or the one that was named instead, could not be loaded."""


class OptIn(enum.IntEnum):
    """The user's answer, as it is stored."""

    UNKNOWN = -1
    OUT = 0
    IN = 1


class SerializationState(enum.IntEnum):
    """What the host is to its user."""

    PRE_RELEASE = 0
    TRIAL = 1
    SERIALIZED = 2
    SHARED_COMPONENT = 3


_TEXT = ctypes.c_char_p
_HANDLE = ctypes.c_void_p
_OUT_HANDLE = ctypes.POINTER(_HANDLE)
_OUT_INT = ctypes.POINTER(ctypes.c_int)
_OUT_SIZE = ctypes.POINTER(ctypes.c_ulong)
_DOCUMENT = [_TEXT, ctypes.c_int]
_SIGNATURES = {
    "UTInitialize": (None, [_TEXT, ctypes.c_ubyte, _TEXT]),
    "UTStartSession": (None, [_OUT_HANDLE] + [_TEXT] * 5),
    "UTAddToSession": (None, [_HANDLE, _TEXT, _TEXT]),
    "UTLogEvent": (None, [_HANDLE, _TEXT, _TEXT, _TEXT] + _DOCUMENT),
    "UTNewDataGroup": (None, [_HANDLE, _TEXT, _TEXT, _TEXT, _OUT_INT] + _DOCUMENT),
    "UTAddToGroup": (None, [_HANDLE, ctypes.c_int, _TEXT, _TEXT]),
    "UTCloseSession": (None, [_OUT_HANDLE]),
    "UTGetOptIn": (ctypes.c_int, []),
    "UTSetOptIn": (None, [ctypes.c_int]),
    "UTOptInGet": (ctypes.c_int, [_TEXT]),
    "UTOptInSet": (None, [_TEXT, ctypes.c_int]),
    "UTGetNonDefaultDemographic": (None, [_TEXT, _TEXT, _TEXT, _OUT_SIZE]),
    "UTSetNonDefaultDemographic": (None, [_TEXT, _TEXT, _TEXT]),
    "UTSetSerializationState": (ctypes.c_int, [ctypes.c_int]),
}

_library: Optional[ctypes.CDLL] = None
_loading = threading.Lock()


def load(path: Optional[Path] = None) -> None:
    """Load the library, from a path if one is given; a loaded one stays.

    Raises LibraryNotFound.
    """
    global _library
    with _loading:
        if _library is None:
            _library = _open_library(path)


def _open_library(path: Optional[Path]) -> ctypes.CDLL:
    if path is not None:
        name, origin = os.fspath(path), "the path given to load()"
    elif os.environ.get(LIBRARY_VARIABLE):
        name, origin = os.environ[LIBRARY_VARIABLE], f"the variable {LIBRARY_VARIABLE}"
    else:
        name, origin = SONAME, f"the dynamic linker; {LIBRARY_VARIABLE} may name another place"
    try:
        library = ctypes.CDLL(name)
        for function, (result, arguments) in _SIGNATURES.items():
            symbol = getattr(library, function)
            symbol.restype, symbol.argtypes = result, arguments
    except (OSError, AttributeError) as error:
        raise LibraryNotFound(f"cannot load {name} (from {origin}): {error}") from error
    return library


def _api() -> ctypes.CDLL:
    if _library is None:
        load()
    assert _library is not None
    return _library


def _text(name: str, value: Optional[str], optional: bool = False) -> Optional[bytes]:
    if value is None and optional:
        return None
    if not isinstance(value, str):
        raise TypeError(f"{name} must be a str, not {type(value).__name__}")
    return value.encode("utf-8", "surrogatepass")  # the library records U+FFFD for a surrogate


def _document(document_id: Optional[DocumentId]) -> tuple[Optional[bytes], int]:
    if isinstance(document_id, (bytes, bytearray)):
        encoded: Optional[bytes] = bytes(document_id)
    else:
        encoded = _text("document_id", document_id, optional=True)
    return encoded, min(len(encoded or b""), 2**31 - 1)


def initialize(
    usage_key: str, detect_crashes: bool = False, agent_folder: Optional[Path] = None
) -> None:
    """UTInitialize."""
    key = _text("usage_key", usage_key)
    folder = None if agent_folder is None else os.fsencode(agent_folder)
    _api().UTInitialize(key, bool(detect_crashes), folder)


def get_opt_in(usage_key: Optional[str] = None) -> OptIn:
    """The answer for the key given to initialize(), or for another one."""
    if usage_key is None:
        return OptIn(_api().UTGetOptIn())
    return OptIn(_api().UTOptInGet(_text("usage_key", usage_key)))


def set_opt_in(answer: OptIn, usage_key: Optional[str] = None) -> None:
    """Store the answer for the key given to initialize(), or for another one."""
    if usage_key is None:
        _api().UTSetOptIn(OptIn(answer))
    else:
        _api().UTOptInSet(_text("usage_key", usage_key), OptIn(answer))


def set_serialization_state(state: SerializationState) -> None:
    """UTSetSerializationState."""
    _api().UTSetSerializationState(SerializationState(state))


def get_demographic(key: str, product_key: Optional[str] = None) -> Optional[str]:
    """The whole answer, of a product if one is named; None where none can be read."""
    arguments = _text("product_key", product_key, optional=True), _text("key", key)
    while True:
        size = ctypes.c_ulong(0)
        _api().UTGetNonDefaultDemographic(*arguments, None, ctypes.byref(size))
        if size.value == 0:
            return None
        buffer = ctypes.create_string_buffer(size.value + 1)
        written = ctypes.c_ulong(len(buffer))
        _api().UTGetNonDefaultDemographic(*arguments, buffer, ctypes.byref(written))
        if written.value < len(buffer):  # else it has been made longer, or removed, meanwhile
            return buffer.value.decode("utf-8", "replace")


def set_demographic(key: str, answer: Optional[str], product_key: Optional[str] = None) -> None:
    """Store an answer, of a product if one is named."""
    _api().UTSetNonDefaultDemographic(
        _text("product_key", product_key, optional=True),
        _text("key", key),
        _text("answer", answer, optional=True),
    )


class Group:
    """A group of values that a session has declared. False when it was refused."""

    def __init__(self, session: Session, group_id: int) -> None:
        self._session = session
        self._id = group_id

    def __bool__(self) -> bool:
        return self._id != -1

    def add(self, key: str, value: Optional[str]) -> None:
        """UTAddToGroup."""
        _api().UTAddToGroup(
            self._session._handle, self._id, _text("key", key), _text("value", value, True)
        )


class Session:
    """A session, or, when none is recorded, an object that is false and records nothing.

    Close it, or use it in a with statement: one that is only forgotten stays open.
    """

    def __init__(
        self,
        family: str,
        name: str,
        version: str,
        build: Optional[str] = None,
        language: Optional[str] = None,
    ) -> None:
        self._handle = _HANDLE()
        _api().UTStartSession(
            ctypes.byref(self._handle),
            _text("family", family),
            _text("name", name),
            _text("version", version),
            _text("build", build, True),
            _text("language", language, True),
        )

    def __bool__(self) -> bool:
        return bool(self._handle)

    def __enter__(self) -> Session:
        return self

    def __exit__(
        self,
        kind: Optional[Type[BaseException]],
        error: Optional[BaseException],
        traceback: Optional[TracebackType],
    ) -> None:
        self.close()

    def close(self) -> None:
        """UTCloseSession. Closing again does nothing."""
        _api().UTCloseSession(ctypes.byref(self._handle))

    def add(self, key: str, value: Optional[str]) -> None:
        """UTAddToSession."""
        _api().UTAddToSession(self._handle, _text("key", key), _text("value", value, True))

    def log_event(
        self,
        category: Optional[str],
        sub_category: Optional[str],
        name: Optional[str],
        document_id: Optional[DocumentId] = None,
    ) -> None:
        """UTLogEvent."""
        _api().UTLogEvent(
            self._handle,
            _text("category", category, True),
            _text("sub_category", sub_category, True),
            _text("name", name, True),
            *_document(document_id),
        )

    def new_group(
        self,
        category: str,
        sub_category: Optional[str],
        name: str,
        document_id: Optional[DocumentId] = None,
    ) -> Group:
        """UTNewDataGroup."""
        group_id = ctypes.c_int(-1)
        _api().UTNewDataGroup(
            self._handle,
            _text("category", category),
            _text("sub_category", sub_category, True),
            _text("name", name),
            ctypes.byref(group_id),
            *_document(document_id),
        )
        return Group(self, group_id.value)
