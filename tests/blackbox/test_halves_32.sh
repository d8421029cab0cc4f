#!/usr/bin/env bash
exec "$(dirname "$0")/halves.sh" 32
