#!/usr/bin/env bash
exec "$(dirname "$0")/code_page.sh" ja_JP
