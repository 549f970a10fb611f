#!/usr/bin/env bash
# Runs a Windows program the way this project runs them: scripts/wine.sh PROGRAM [ARGUMENT...]
# QEL_LOCALE names another locale, whose code page is the ANSI one then: ru_RU.UTF-8 has 1251. It need not exist.
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
[ -z "${QEL_LOCALE:-}" ] || QEL_WINE=(env LC_ALL="$QEL_LOCALE" XDG_CACHE_HOME="$(dirname "$WINEPREFIX")" wine)
exec "${QEL_WINE[@]}" "$@"
