#!/usr/bin/env bash
# qmcore region, zoom, address and coordinates.
source "$(dirname "$0")/lib.sh" "$@"

# Regions: across the 180th meridian the narrow box wins; otherwise the plain one.
expect_line "center longitude: 180" -- region 0,179 0,-179
expect_line "longitude delta: 2" -- region 0,179 0,-179
expect_line "center longitude: 15" -- region 0,10 0,20
expect_line "longitude delta: 10" -- region 0,10 0,20
expect_line "valid: false" -- region 0,10 0,20
expect_line "valid: true" -- region 1,10 2,20
expect_line "center longitude: -170" -- region -10,170 10,-150
expect_line "latitude delta: 1" -- region -33.8,151.2
expect_line "longitude delta: 1.01" -- region -33.8,151.2
expect_line "description: ◎ 47.500000, 8.250000" -- region 47.5,8.25
expect_line "  ⇿ 1.000000° × 1.010000°" -- region 47.5,8.25
expect_line "valid: false" -- region 0,inf 1,2
expect_json '{"centerLongitude": 180, "longitudeDelta": 2, "valid": false}' -- --json region 0,179 0,-179
expect_fail 2 "COORDINATE is not LAT,LON: '10'" -- region 10
expect_fail 2 "LON is not a number: 'x'" -- region 1,x
expect_fail 2 "COORDINATE is not LAT,LON: '1,2,3'" -- region 1,2,3

# Ground resolution: zoom clamped to 0..24, latitude to +-85.0511.
expect_line "156543.03392" -- zoom resolution --latitude 0 --zoom 0
expect_line "156543.03392" -- zoom resolution --latitude 0 --zoom -3
expect_line "78271.51696" -- zoom resolution --latitude 0 --zoom 1
expect_line "0.009330691928863525" -- zoom resolution --latitude 0 --zoom 24
expect_line "0.009330691928863525" -- zoom resolution --latitude 0 --zoom 30
expect_json '{"latitude": 89, "zoom": 0}' -- --json zoom resolution --latitude 89 --zoom 0
expect_fail 2 "--zoom is not a whole number: '1.5'" -- zoom resolution --latitude 0 --zoom 1.5
expect_fail 2 "--latitude is not a finite number" -- zoom resolution --latitude inf --zoom 1

# Camera heights and back; no viewport gives 0.
expect_line "74768.34426679049" -- zoom altitude --zoom 10 --latitude 48 --pitch 30 --height 844
expect_line "10" -- zoom level --altitude 74768.34426679049 --latitude 48 --pitch 30 --height 844
expect_line "0" -- zoom altitude --zoom 10 --latitude 48 --height 0
expect_line "0" -- zoom level --altitude 0 --latitude 0 --height 100
expect_line "0" -- zoom level --altitude 1000 --latitude 0 --height -5
# Not limited to 0..24: a camera 1 mm up at the equator.
expect_line "36" -- zoom level --altitude 0.001 --latitude 0 --pitch 45 --height 1000
expect_fail 2 "no zoom level for latitude 95" -- zoom level --altitude 1000 --latitude 95 --height 100
expect_fail 2 "--height is required" -- zoom level --altitude 1000 --latitude 0

# Addresses: the US and the German mailing layouts.
us=(address --street "Main St" --number 12 --city Springfield --state IL --postcode 62701)
expect_line "formattedAddress: 12 Main St" -- "${us[@]}" --country US
expect_line "  Springfield IL 62701" -- "${us[@]}" --country US
expect_line "  United States" -- "${us[@]}" --country US
expect_line "line2Address: Springfield IL 62701, United States" -- "${us[@]}" --country US
expect_line "streetAddress: Main St 12, Springfield, IL, 62701, US" -- "${us[@]}" --country US
expect_line "formattedAddress: Main St 12" -- "${us[@]}" --country DE
expect_line "  62701 Springfield" -- "${us[@]}" --country DE
expect_line "  Deutschland" -- --locale de_DE "${us[@]}" --country DE
expect_line "addressWithName: Cafe, 12 Main St, Springfield IL 62701, United States" -- "${us[@]}" --country US --name Cafe
expect_line "addressWithName: 12 Main St, Springfield IL 62701, United States" -- "${us[@]}" --country US --name "12 Main"
expect_line "streetAddress:  12, Springfield" -- address --number 12 --city Springfield
expect_line "formattedAddress: (none)" -- address --name Cafe
expect_line "addressWithName: Cafe" -- address --name Cafe
expect_json '{"formattedAddress": null, "line2Address": null, "streetAddress": ""}' -- --json address

# The catalogs in display order with their codes, in the current locale.
expect_line "  2	MGRS" -- coordinates
expect_line "  1	grad, minuten" -- --locale de_DE coordinates
expect_line "  1	Latitude band" -- coordinates
expect_json '{"catalog": "QMCoordinateType", "code": 0, "name": "Latitude, Longitude"}' -- --json coordinates

finish
