#!/usr/bin/env bash
exec "$(dirname "$0")/round.sh" 32 winxp
