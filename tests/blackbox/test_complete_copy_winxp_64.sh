#!/usr/bin/env bash
exec "$(dirname "$0")/complete_copy.sh" 64 winxp
