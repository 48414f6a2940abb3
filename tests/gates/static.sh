#!/usr/bin/env bash
# What ten messages cost a firmware for 32-bit ARM that links statically: builds tests/consumer/static, sees its replies
# under emulation and measures the library's part of it.
#   static.sh MOST WANTED [CMAKE_OPTION...]     bytes; -DNETPUBLIC_TREES=ON and the like
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source=$(cd "$here/../.." && pwd)
most=$1 wanted=$2
shift 2
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

cmake -S "$source/tests/consumer/static" -B "$tmp" -G Ninja -DNETPUBLIC_SOURCE="$source" -DCMAKE_BUILD_TYPE=MinSizeRel \
    -DCMAKE_TOOLCHAIN_FILE="$source/cmake/armhf.cmake" "$@" >"$tmp/log"
cmake --build "$tmp" --target firmware >>"$tmp/log" || { cat "$tmp/log"; exit 1; }

# The reply has what the example says.
replies() { # MESSAGE REQUEST TEXT
    if ! qemu-arm "$tmp/firmware" "$1" <"$source/examples/$2.xml" | grep -qF "$3"; then
        echo "$1: no reply, or one without $3"
        exit 1
    fi
}
replies device-info device_information '<diskNum>2<'
replies system-general general_settings '<osdFormat>DMY<'
replies ethernet ethernet '<ip>192.168.1.108<'
replies dhcp dhcp '<Dhcp '
replies encoder encoder_settings '<width>3840<'
replies osd-chn osd_channel '<name>Gate (north)</name>'
replies pic-shelter privacy_masks '<shelterList><Shelter>'
replies md motion_request '<sensitivity>20</sensitivity><beginHour>6</beginHour>'
replies record-schedule record_schedule_types '<type>MD</type><valueTable>'
replies record-configuration record_configuration '<packageTime>60<'

python3 "$here/static_size.py" "$tmp/firmware.map" "$most" "$wanted"
echo "of TinyXML, called: $(arm-linux-gnueabihf-nm -C "$tmp/firmware" | grep -c 'TiXml[A-Z][a-z]*::')"
