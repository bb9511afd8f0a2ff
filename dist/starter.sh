#!/bin/sh
# Starts the program that this file is installed as by its real path, from which it finds what is installed
# with it. A link to this file may have any name.
real=$(readlink -f -- "$0")
here=${real%/*}
exec "${here%/*}/lib/zendry/bin/${real##*/}" "$@"
