# shellcheck shell=bash
# Sourced by the tests of colours: three schemes, and what of a window's texts is to be read in them.

# Numbers of GetSysColor and their names in the registry.
colour_names=(Scrollbar Background ActiveTitle InactiveTitle Menu Window WindowFrame MenuText WindowText TitleText ActiveBorder
    InactiveBorder AppWorkspace Hilight HilightText ButtonFace ButtonShadow GrayText ButtonText InactiveTitleText ButtonHilight
    ButtonDkShadow ButtonLight InfoText InfoWindow)
# In the order of these numbers. Black and white as the systems have them for great contrast; the third is nobody's taste,
# with a border's colour that no text of the scheme is meant for.
scheme_black="000000 000000 800080 008000 000000 000000 FFFFFF FFFFFF FFFFFF FFFFFF FFFF00 00FFFF 000000 800080 FFFFFF 000000 808080 00FF00 FFFFFF FFFFFF C0C0C0 FFFFFF FFFFFF FFFF00 000000"
scheme_white="FFFFFF FFFFFF 000000 FFFFFF FFFFFF FFFFFF 000000 000000 000000 FFFFFF 808080 C0C0C0 808080 000000 FFFFFF FFFFFF 808080 00C000 000000 000000 C0C0C0 000000 C0C0C0 000000 FFFFFF"
scheme_sea="004050 003040 006080 305060 D0F0F0 103048 FFFF80 002030 FFFF80 FFFFFF 80C0D0 FFE0A0 204050 FFE000 000000 D0F0F0 408090 508088 002030 E0E0E0 E8FFFF 204048 B0E0E0 FFFF80 002030"

colours_of() { local -n scheme=scheme_$1; read -ra colours <<<"$scheme"; }
# Before the program starts: the prefix's registry, and the classic look, since a theme has colours of its own.
store_scheme() { # NAME
    local i line
    colours_of "$1"
    {
        printf 'REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Control Panel\\Colors]\r\n'
        for i in "${!colour_names[@]}"; do
            line=${colours[i]}
            printf '"%s"="%d %d %d"\r\n' "${colour_names[i]}" "0x${line:0:2}" "0x${line:2:2}" "0x${line:4:2}"
        done
        printf '\r\n[HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\ThemeManager]\r\n"ThemeActive"="0"\r\n'
    } >"$artefacts/scheme.reg"
    import_registry "$artefacts/scheme.reg"
}
# While it runs.
switch_scheme() { # NAME
    local i order=
    colours_of "$1"
    for i in "${!colours[@]}"; do order+="$i=${colours[i]} "; done
    inspect colours frmMain "$order"
}

# Names and places of what stands in the window as text, disabled texts aside: controls inside their edges, the bar's
# headers, the text below each of its pictures.
places_of_texts() {
    local left top right bottom x y number
    inspect all | while IFS=$'\t' read -r name state seen _ place class text; do
        [ "$state $seen" = 'enabled visible' ] || continue
        read -r left top right bottom <<<"$place"
        case $class in
            BromvaleForm | BromvaleListBar | msctls_progress32) continue ;;
            # Of a group the line with its caption, which begins behind the corner; of a box what is behind its mark.
            Button)
                case $name in
                    Frame*) left=$((left + 8)) bottom=$((top + 14)) right=$((left + 60)) ;;
                    cmd*) ;;
                    *) left=$((left + 17)) ;;
                esac
                ;;
            SysListView32) bottom=$((bottom - 20)) ;;
        esac
        [ -n "$text" ] || [ "$class" = SysListView32 ] || [ "$class" = msctls_statusbar32 ] || continue
        printf '%s\t%d %d %d %d\n' "$name" $((left + 3)) $((top + 3)) $((right - 3)) $((bottom - 3))
    done
    for number in 1 2 3; do
        read -r x y < <(inspect bar-header Menu "$number" 2>/dev/null) || continue
        printf 'header %s\t%d %d %d %d\n' "$number" $((x - 40)) $((y - 7)) $((x + 40)) $((y + 7))
    done
    for number in $(seq 11); do
        read -r x y < <(inspect bar-item Menu "$number" 2>/dev/null) || continue
        printf 'item %s\t%d %d %d %d\n' "$number" $((x - 40)) $((y + 22)) $((x + 40)) $((y + 36))
    done
}
