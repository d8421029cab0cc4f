#include "bromvale-offline/options.h"

namespace bromvale::offline {

const char* helpText() {
    return R"(bromvale-offline: Bromvale on exported registries, raw hives and disks of Windows

  bromvale-offline [OPTION...] [-- COMMANDLINE]

  --registry FILE.reg   what the registry editor exported; several files merge in order.
                        Without one an example machine is used
  --drive C:=FOLDER     a folder stands for the drive; all other drives are empty and live in memory
  --app-path PATH       where the program lies (C:\Programme\Bromvale)
  --os NAME             "Windows 95", "Windows 98", "Windows 98 SE", "Windows ME", "Windows NT4",
                        "Windows 2000", "Windows XP" (default), or platform.major.minor.build
  --locale de|en        date, time and number formats (de)
  --now TIME            2026-11-15T07:12:09 (default: the time now); the clock only moves when the program waits
  --user NAME           user (Benutzer); with --windows a name, a SID or all
  --computer NAME       computer (RECHNER)
  --web-host HOST[:PORT]  stands in for the host of the web services
  --script FILE|-       actions, one a line; without a script the program scans and prints what it found
  --save FILE.reg       writes the registry as it is at the end; the files that were read never change

Raw hives and disks of Windows, which are only read until --write is given:

  --windows FOLDER      a mounted disk, or the Windows folder on it, NT4 to 11 and 95 to ME. Its hives, users,
                        folders and version are found; --drive D:=FOLDER names its other drives. What points to
                        a drive, share or device that is not at hand is counted and not judged
  --view 64|32|both     which view of a 64-bit Windows (64)
  --hive KEY=FILE       a raw hive, as 'HKEY_LOCAL_MACHINE\Software=FILE'; as often as wanted
  --log FILE            a log of the hive before it; without one those that lie beside it are taken
  --report FORM FILE|-  text, csv or json; as often as wanted (text to standard output)
  --check               exit status 3 where something was found
  --export FILE [KEY]   writes the registry, or a key of it, as a registry file
  --remove ROWS         shows the keys that would go: all, 1,3-5, or a file with a row or a key a line. For
                        Windows 95 to ME files for its registry editor are written
  --write               takes them out of the hives, after a question for their number. Copies stay beside
  --yes NUMBER          answers the question
  --undo STAMP|list     puts a cleaning back, byte for byte, or lists those there are
  --force               with --undo: also a hive that was changed since
  --not-hibernated      with --write, --undo: this Windows does not sleep, whatever an odd hiberfil.sys says
  --lose-transactions   with --write, --undo: what waits in *.regtrans-ms may be lost

  --time                seconds of loading and scanning, entries a second and peak memory, to standard error
  --help                this text

Actions of a script (empty lines and lines that start with # are passed over):

  click NAME            a button, check box or option button      print NAME      its text, caption or value
  check NAME 0|1        a check box                               rows NAME       a list's rows, columns by tabs
  text NAME TEXT        types a text, \n for a line end           window          all visible controls
  choose NAME TEXT      an entry of a combo box                   close [NAME]    the window's close box
  select NAME ROWS      1 3-5, all or none                        answer BUTTON   of the next message box: OK, Ja ...
  column NAME N         a column header                           browse PATH     folder for the next folder dialog
  key NAME KEY          F5, Delete, Return, Alt+S ...             menu NAME       entry of the menu that opened last
  doubleclick NAME ROW  a row of a list                           nav CAPTION     an icon of the navigation bar
  mouseup NAME BUTTON   left, right or middle, on a list          tray BUTTON     left, right or double, on the icon
  resize W H            the main window, in twips                 wait SECONDS    lets the clock run
  save PATH             file for the next dialog "save as"
  at N ACTION           runs the action when events are served for the N-th time from here

Everything that the program shows, asks, starts or writes goes to standard output, one line each, UTF-8; line ends in
texts are written \n.

Exit status: 0 done, 1 an action of the script could not be done, 2 wrong option or unreadable file, 3 faults found
(with --check), 4 refused, nothing was written; otherwise what the program itself ended with.
)";
}

}  // namespace bromvale::offline
