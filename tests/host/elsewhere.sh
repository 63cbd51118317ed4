#!/usr/bin/env bash
# The manual's command for many machines, run over a daemon of its own on this one: the samples are those of a local
# run. Arguments: the tool, the source folder. Status 77: a package is missing, or no daemon lets anyone in.
set -euo pipefail
nrwave=$1 source=$2
for program in /usr/sbin/sshd ssh parallel rsync; do
    command -v "$program" >/dev/null || { echo "skipped: $program is missing (scripts/setup test)"; exit 77; }
done
place=$(mktemp -d)
cd "$place"
skip() { echo "skipped: $1"; tail -n 3 sshd.log ssh.log; exit 77; }
touch sshd.log ssh.log
if [ "$(id -u)" = 0 ]; then
    mkdir -p /run/sshd || skip "no folder for a daemon of root" # as Debian's service has it
fi
for key in host_key user_key; do
    ssh-keygen -q -t ed25519 -N '' -f $key
done
port=$(/usr/bin/python3 -c 'import socket; s = socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])') ||
    skip "no port of 127.0.0.1"
printf '%s\n' "Port $port" "ListenAddress 127.0.0.1" "HostKey $place/host_key" "PidFile none" "StrictModes no" \
    "AuthorizedKeysFile $place/user_key.pub" "SetEnv PATH=$(dirname "$nrwave"):/usr/bin:/bin" >sshd_config
/usr/sbin/sshd -D -e -f sshd_config 2>sshd.log &
daemon=$!
trap 'kill $daemon 2>/dev/null || true; rm -rf "$place"' EXIT
printf '%s\n' "Host node1 node2" "HostName 127.0.0.1" "Port $port" "IdentityFile $place/user_key" "LogLevel ERROR" \
    "UserKnownHostsFile $place/known_hosts" "StrictHostKeyChecking accept-new" "IdentitiesOnly yes" \
    "BatchMode yes" "ConnectTimeout 5" >ssh_config
export PARALLEL_SSH="ssh -F $place/ssh_config" PARALLEL_HOME=$place/.parallel
for try in {1..50}; do # a machine that lets no daemon run or nobody log in says nothing of the tool
    timeout 10 ssh -F ssh_config node1 true </dev/null 2>ssh.log && break
    kill -0 $daemon 2>/dev/null && [ "$try" != 50 ] || skip "no one can log in over ssh as $(id -un)"
    sleep 0.1
done

for cell in 1 2 3; do
    printf 'carrier[0].%s\n' channel_bandwidth=20M dl_ssb.enable=true ncell_id=$cell >$cell.recipe
    echo "$cell.recipe out/$cell" >>many.txt
done
eval "$(sed -n 's/^    \(parallel .*\)/\1/p' "$source/docs/many.md")"
for cell in 1 2 3; do
    "$nrwave" generate --recipe $cell.recipe -o local --format cf32 --quiet
    cmp local.cf32 out/$cell.cf32
done
