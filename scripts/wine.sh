#!/usr/bin/env bash
# Runs a Windows program the way this project runs them: scripts/wine.sh PROGRAM [ARGUMENT...]
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
exec "${QEL_WINE[@]}" "$@"
