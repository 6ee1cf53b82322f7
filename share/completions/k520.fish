# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The K520 authors
#
# Completions of k520 for fish.

complete -c k520 -s h -l help -d 'Print the options and end'
complete -c k520 -l help-all -d 'Print the options, those of the window toolkit too, and end'
complete -c k520 -s v -l version -d 'Print the version and end'
complete -c k520 -l program-folder -xa '(__fish_complete_directories)' \
    -d 'Folder of the settings file and the default image'
complete -c k520 -o style -xa 'fusion windows' -d 'Draw in this style'
complete -c k520 -o platform -xa 'xcb wayland offscreen' -d 'Use this window system'
complete -c k520 -o reverse -d 'Lay windows out from right to left'
