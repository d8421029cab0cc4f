# shellcheck shell=bash
# Sourced by the scripts that offer the web services on this machine, to a program built with the preset "try":
#
#   start_web VERSION      a server that calls VERSION the newest; it answers from $web/site and keeps what it is sent in
#                          $web/request-1, $web/request-2 and so on
#   stop_web

web=$bromvale_top/build/web
web_port=28380

start_web() {
    local tries
    rm -rf "$web"
    mkdir -p "$web"
    cp -r "$bromvale_top/resources/example/site" "$web/site"
    printf %s "$1" >"$web/site/appver.txt"
    "$bromvale_top/tools/recording_server" "$web" site "$web/site" "$web_port" >"$web/server.log" 2>&1 &
    for tries in $(seq 50); do
        [ ! -f "$web/port" ] || return 0
        sleep 0.1
    done
    return 1
}
stop_web() { [ ! -d "$web" ] || touch "$web/stop"; }
