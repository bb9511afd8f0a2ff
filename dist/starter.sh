#!/bin/sh
# Starts the program of this name by its real path, from which it finds what is installed with it.
here=$(dirname -- "$(readlink -f -- "$0")")
exec "${here%/*}/lib/zendry/bin/${0##*/}" "$@"
