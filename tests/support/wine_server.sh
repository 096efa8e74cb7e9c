#!/bin/sh
# The one wine server of a run of the tests under Wine, in the prefix WINEPREFIX names;
# ctest runs it before the first test and after the last (CTestCustom.cmake):
#   wine_server.sh start   makes the prefix ready and starts a server for the run
#   wine_server.sh stop    ends it
#
# Debian's wineserver runs with no persistence (-p0): the server that a program starts
# shuts down as soon as that program ends, and takes the system processes it started
# (services.exe, winedevice.exe, plugplay.exe, svchost.exe, rpcss.exe) with it; the next
# program starts them all again. A program that starts while the server of the one
# before is shutting down is cut off by it ("wine client error", exit status 1, its
# output lost), which made runs of the suite fail now and then. With one server for the
# whole run, nothing starts or stops between two programs. Wine's programs, wineboot's
# too, run with the address space unrandomised (setarch -R), as the toolchain file says.
set -e
case "$1" in
start)
    # The prefix made or brought up to date, and the server that did it gone.
    setarch -R wineboot --init >/dev/null 2>&1
    wineserver --wait
    # A server that outlives each program (a minute after its last one, should the run
    # never stop it), and the system processes, started here with nowhere to write: they
    # outlive this step, and a test is not over while anything holds its output open.
    wineserver --persistent=60 </dev/null >/dev/null 2>&1
    setarch -R wineboot </dev/null >/dev/null 2>&1
    ;;
stop)
    wineserver --kill
    ;;
*)
    echo "usage: $0 start|stop" >&2
    exit 2
    ;;
esac
