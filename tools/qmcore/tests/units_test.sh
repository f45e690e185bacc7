#!/usr/bin/env bash
# qmcore units and convert.
source "$(dirname "$0")/lib.sh" "$@"

expect_fail 2 "" -- no-such-command

finish
