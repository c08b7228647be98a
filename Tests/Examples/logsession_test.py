"""Uses logsession as a host would that makes mistakes. The argument is the agent's folder."""
import os
import sys

import logsession as ut


def raised(expected, call, *arguments):
    try:
        call(*arguments)
    except expected as error:
        return str(error)
    raise SystemExit(f"{call} took {arguments}")


assert "load()" in raised(ut.LibraryNotFound, ut.load, "/etc/passwd")
assert "UTInitialize" in raised(ut.LibraryNotFound, ut.load, "libc.so.6")
os.environ[ut.LIBRARY_VARIABLE] = "/no/such.so"
message = raised(ut.LibraryNotFound, ut.get_opt_in)
assert "/no/such.so" in message and ut.LIBRARY_VARIABLE in message, message
del os.environ[ut.LIBRARY_VARIABLE]

ut.initialize("key", False, sys.argv[1])
ut.set_opt_in(ut.OptIn.OUT)
with ut.Session("Suite", "Editor", "1.0") as refused:
    assert not refused and not refused.new_group("A", "B", "C")
    refused.add("Key", "Value")
ut.set_opt_in(ut.OptIn.IN)
assert (ut.get_opt_in(), ut.get_opt_in("other")) == (ut.OptIn.IN, ut.OptIn.UNKNOWN)
raised(ValueError, ut.set_opt_in, 2)

try:
    with ut.Session("Suite", "Editor", "1.0", language="de") as session:
        raised(TypeError, ut.Session, "Suite", "Editor", 1.0)
        raised(TypeError, ut.initialize, None)
        raised(TypeError, session.add, b"Key", "Value")
        raised(TypeError, session.add, "Key", 1)
        raised(TypeError, session.log_event, "A", "B", "C", 5)
        raised(TypeError, session.new_group, "A", "B", None)
        session.add("Key", "gr\u00fcn\0unseen")
        session.add("Surrogate", "\ud800")
        group = session.new_group("A", None, "G", "id")
        group.add("Key", None)
        session.log_event(None, None, "Same", b"id\0unseen")
        raise LookupError
except LookupError:
    assert not session
session.add("Key", "late")
group.add("Key", "late")
session.close()

assert ut.get_demographic("Work") is None
ut.set_demographic("Work", "w" * 128)
ut.set_demographic("Work", "gr\u00fcn", "product")
assert ut.get_demographic("Work") == "w" * 128
assert ut.get_demographic("Work", "product") == "gr\u00fcn"
