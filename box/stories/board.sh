# Buttons, calibration images, the package's id, chips on the PCI bus.
. "$STORY/lib.sh"
probe chips
must simctl press wps pressed
must simctl press wlan11ac on
probe read wifimgr_lib_get_WPS_BUTTON 32 read wifimgr_lib_get_WPS_BUTTON 32 read wifimgr_lib_get_WLAN11AC_BUTTON 32 \
  read wifimgr_lib_get_WLAN11AC_BUTTON 32
must simctl press wlan go
probe button 0 /proc/zq2810/wlan_button button 0 /proc/zq2810/wlan_button
must simctl press wps5g
probe button 1 /proc/zq2810/wps_5g_button button 1 /proc/zq2810/wps_5g_button button 0 /proc/zq2810/none
# Of readers at the same time one gets the press.
must simctl press wlan once
for reader in 1 2 3 4; do cat /proc/zq2810/wlan_button >press$reader & done
wait
fact "four readers: $(cat press1 press2 press3 press4)"
probe read wifimgr_lib_get_AHB_STATUS 8 write wifimgr_lib_set_AHB_STATUS 7 read wifimgr_lib_get_AHB_STATUS 8 \
  write wifimgr_lib_set_LED_WLAN 0
cat /proc/zq2810/led_wlan
echo
probe share 1 2 on off | cut -d' ' -f3- >share
sh share
cat /proc/zq2810/wlanshare
must simctl chip-id 29
probe chip-id pcie 1
must simctl calibration 2.4G chip=7915
must simctl calibration 5G chip=7663
probe band wifimgr_lib_get_wifi_calibration 0 band wifimgr_lib_get_wifi_calibration 1
for image in /etc/RT30xxEEPROM.bin /etc/Wireless/RT2860AP_AC/RT30xxEEPROM.bin; do file $image; done
done_here
