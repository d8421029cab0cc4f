#!/usr/bin/env bash
exec "$(dirname "$0")/small.sh" 64 winxp "Windows XP" there there
