#!/usr/bin/env bash
exec "$(dirname "$0")/small.sh" 32 nt40 "Windows NT4" there there
