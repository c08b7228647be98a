"""Run it with the folder that holds the agent "LogTransport2.app"."""
import sys

import logsession

logsession.initialize("MyProduct", True, sys.argv[1] if len(sys.argv) > 1 else None)
logsession.set_opt_in(logsession.OptIn.IN)  # what the user answered
with logsession.Session("My Suite", "My Product", "1.0", "100", "en_US") as session:
    session.add("Theme", "dark")
    session.log_event("File", "Open", "Image")
