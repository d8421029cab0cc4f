#!/usr/bin/env bash
# small.sh BITS VERSION OS-NAME LEFT-3 LEFT-5: a registry with one fault of each kind; the undo file, the log and the
# keys that are left, written out in full. NT refuses to delete a key with sub keys, 9x takes them along.
. "$(dirname "$0")/lib.sh"
bits=$1 version=$2 system=$3 left_of_3=$4 left_of_5=$5
need_width "$bits"
prepare "$bits" tests/blackbox/small.reg
set_windows_version Bromvale.exe "$version"
program
check "the program ends by itself with status 0" [ $? = 0 ]

classes='HKEY_LOCAL_MACHINE\Software\Classes\CLSID'
current='HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion'
three='{30000000-0000-0000-0000-000000000003}' five='{50000000-0000-0000-0000-000000000005}'
# In the order of removal: by the key, descending.
check "the undo file holds these records" tests/desktop/check_undo "$(undo_file)" "$system" ordered <<EOF
-	[$current\\Uninstall\\Größe]	"DisplayName"	Größe [=]
-	[$current\\App Paths\\fehlt.exe]	"Path"	C:\\\\Gibt\\\\es
-	[$current\\App Paths\\fehlt.exe]	@	C:\\\\Gibt\\\\es\\\\nicht.exe
-	[$classes\\$five]	@	Toter "Verweis"
-	[$classes\\$five\\TypeLib]	@	{D0000000-0000-0000-0000-000000000000}
-	[$classes\\$three]	@	Fehlende Datei
-	[$classes\\$three\\InprocServer32]	"ThreadingModel"	Apartment
-	[$classes\\$three\\InprocServer32]	@	C:\\\\Gibt\\\\es\\\\nicht.dll
-	[$classes\\{20000000-0000-0000-0000-000000000002}]	@	
EOF

key_state() { if in_wine "$wine_loader" reg query "$1" >/dev/null 2>&1; then echo there; else echo gone; fi; }
while read -r state key; do
    check "$state: $key" [ "$(key_state "$key")" = "$state" ]
done <<EOF
gone $current\\Uninstall\\Größe
there $current\\Uninstall\\Alpha
there $current\\Uninstall\\Zuletzt
gone $current\\App Paths\\fehlt.exe
there $current\\App Paths\\da.exe
gone $classes\\{20000000-0000-0000-0000-000000000002}
$left_of_3 $classes\\$three
gone $classes\\$three\\InprocServer32
$left_of_5 $classes\\$five
gone $classes\\$five\\TypeLib
there $classes\\{10000000-0000-0000-0000-000000000001}
there $classes\\{40000000-0000-0000-0000-000000000004}\\InprocServer32
there $classes\\{60000000-0000-0000-0000-000000000006}
EOF

# With Protokoll off the log holds the start and the missing backup folder, and nothing else.
log=$(iconv -f CP1252 -t UTF-8 "$(log_file)" | tr -d '\r' | sed -E 's/^[0-9]{2}\.[0-9]{2}\.[0-9]{4} [0-9]{2}:[0-9]{2}:[0-9]{2}; //')
check "the log begins with the start" grep -qE '^started; Bromvale; [0-9]+\.[0-9]+\.[0-9]+; für Windows 98/ME und NT4$' <(head -n 1 <<<"$log")
check "the log tells of the new folder" grep -qF 'frmMain; ProblemeEntfernen; Ordner C:\Program Files\Bromvale\Backup\ angelegt; 76; ' <<<"$log"
[ "$failures" = 0 ] || printf '%s\n' "$log"
finish
