# Sourced by the scripts that start the real app: start_private_session_bus DIR starts a
# session bus listening in DIR, exports its address and adds its pid to the caller's `pids`.
# It lists no service folder, so nothing the desktop installed (a notification server, a
# player) starts on it.
start_private_session_bus() {
    local dir=$1
    cat >"$dir/bus.conf" <<EOF
<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:dir=$dir</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
EOF
    dbus-daemon --config-file="$dir/bus.conf" --fork --print-address=1 --print-pid=1 >"$dir/bus"
    DBUS_SESSION_BUS_ADDRESS=$(sed -n 1p "$dir/bus")
    export DBUS_SESSION_BUS_ADDRESS
    pids+=("$(sed -n 2p "$dir/bus")")
}
