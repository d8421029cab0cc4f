#!/usr/bin/env bash
exec "$(dirname "$0")/complete_copy.sh" 32 win98
