# full_disk.sh PROGRAM [ARGUMENT...]: runs a program for which the disk is full once a file has 256 KiB. The signal that
# comes with the refused write is ignored, so that the program sees what a full disk shows it: a write that fails.
# Wine's server, which has larger files, is started before.
wine ping -n 99999 127.0.0.1 >/dev/null 2>&1 &
wine hostname >/dev/null 2>&1
trap '' XFSZ
ulimit -f 512
exec wine "$@"
