#!/usr/bin/env bash
exec "$(dirname "$0")/portable_round.sh" 32
