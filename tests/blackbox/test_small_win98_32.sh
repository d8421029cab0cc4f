#!/usr/bin/env bash
exec "$(dirname "$0")/small.sh" 32 win98 "Windows 98 SE" gone gone
