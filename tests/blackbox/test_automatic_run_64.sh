#!/usr/bin/env bash
exec "$(dirname "$0")/automatic_run.sh" 64
