#compdef k520
# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The K520 authors
#
# Completions of k520 for zsh.

_arguments \
    '(- *)'{-h,--help}'[Print the options and end]' \
    '(- *)--help-all[Print the options, those of the window toolkit too, and end]' \
    '(- *)'{-v,--version}'[Print the version and end]' \
    '--program-folder=[Folder of the settings file and the default image]:folder:_files -/' \
    '-style[Draw in this style]:style:(fusion windows)' \
    '-platform[Use this window system]:platform:(xcb wayland offscreen)' \
    '-reverse[Lay windows out from right to left]' \
    '1:data file:_files'
