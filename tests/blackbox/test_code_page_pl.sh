#!/usr/bin/env bash
exec "$(dirname "$0")/code_page.sh" pl_PL
