#!/usr/bin/env bash
exec "$(dirname "$0")/round.sh" 64 win10
