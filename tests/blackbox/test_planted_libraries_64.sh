#!/usr/bin/env bash
exec "$(dirname "$0")/planted_libraries.sh" 64
