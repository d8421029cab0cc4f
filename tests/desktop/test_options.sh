#!/usr/bin/env bash
# The options page by mouse and keyboard: what is stored at once, what is forced, the corrected port, the apply button.
. "$(dirname "$0")/lib.sh"
prepare_example
settings AutoScan 0 AutoEntfernen 0 AutoClose 0 RebootAfterDelete 0 AutoRegFileDel 0 DelAfterDays 50 \
    Proxy 0 ProxyAdresse 0.0.0.0 ProxyPort 80 Protokoll 0 ScreenSave 0 AgentLoad 1 AgentType Rabe
start_program

bar_group 2
bar_item 8
shot 01-options
check "nothing is to be applied yet" disabled cmdÜbernehmen
check "the proxy's fields are greyed" disabled txtProxyPort

check "the animation's box shows its setting" checked chbLoadAgent
check "and can't be changed" disabled chbLoadAgent
check "nor its kind" disabled cboAgentType
check "which is shown" equal "$(text_of cboAgentType)" Rabe
check "the group says why" equal "$(text_of lblNoAgents)" 'Diese Funktion steht nicht zur Verfügung.'

click chbRebootAfterDelete
shot 02-forced
check "a restart forces closing" checked chbAutoClose
check "which can't be taken back" disabled chbAutoClose
check "and removal" checked chbAutoEntfernen
check "all three are stored" equal "$(stored RebootAfterDelete)$(stored AutoClose)$(stored AutoEntfernen)" 111
check "they can be applied" enabled cmdÜbernehmen
click chbRebootAfterDelete
check "closing is free again" enabled chbAutoClose
check "and still ticked" checked chbAutoClose
check "removal isn't" disabled chbAutoEntfernen

click chbAutoRegFileDel
check "the number of days is free" enabled cboAutoRegFileDel
read -r left top right bottom <<<"$(place cboAutoRegFileDel)"
xdotool mousemove $((left + 8)) $((top + 9)) click 1
keys End BackSpace BackSpace
xdotool type 25
settle
shot 03-days
check "a typed number of days is stored" equal "$(stored DelAfterDays)" 25
keys Down Down
check "a chosen one too" equal "$(stored DelAfterDays)" "$(text_of cboAutoRegFileDel)"

click rdoINet2
check "the proxy's fields can be used" enabled txtProxyPort
click txtProxyPort
keys End BackSpace
check "one digit less is stored" equal "$(stored ProxyPort)" 8
keys BackSpace
check "an erased port is 80 at once" equal "$(text_of txtProxyPort)" 80
keys End
xdotool type x
sleep 0.5
settle
shot 04-port-with-a-letter
keys Return
check "a letter brings 80 back" equal "$(text_of txtProxyPort)" 80
check "and the box has the focus" equal "$(inspect focus)" txtProxyPort
check "80 is stored" equal "$(stored ProxyPort)" 80

keys alt+Udiaeresis
shot 05-applied
check "Alt+Ü applies" disabled cmdÜbernehmen
click rdoINet1
check "without a proxy the fields are greyed" disabled txtProxyAdresse
check "this is to be applied too" enabled cmdÜbernehmen
click cmdÜbernehmen
check "and was" disabled cmdÜbernehmen
end_program
check "the animation's settings are as they were" equal "$(stored AgentLoad) $(stored AgentType)" '1 Rabe'
finish
