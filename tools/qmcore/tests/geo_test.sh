#!/usr/bin/env bash
# qmcore region, zoom, address and coordinates.
source "$(dirname "$0")/lib.sh" "$@"

# Regions: each field once, the description indented under its label; no crash on infinity.
expect_line $'center longitude: 15\nlongitude delta: 10\nvalid: true
description: ◎ 1.500000, 15.000000\n  ⇿ 1.000000° × 10.000000°' -- region 1,10 2,20
expect_json '{"centerLatitude": 0, "centerLongitude": 180, "latitudeDelta": 0,
  "longitudeDelta": 2, "valid": false}' -- --json region 0,179 0,-179
expect_line $'longitude delta: inf\nvalid: false' -- region 0,inf 1,2
expect_fail 2 "COORDINATE is not LAT,LON: '1,2,3'" -- region 1,2,3

# Ground resolution, and camera heights and back.
expect_json '{"latitude": 0.5, "zoom": 0}' -- --json zoom resolution --latitude 0.5 --zoom 0
expect_line "74768.34426679049" -- zoom altitude --zoom 10 --latitude 48 --pitch 30 --height 844
expect_line "10" -- zoom level --altitude 74768.34426679049 --latitude 48 --pitch 30 --height 844
expect_fail 2 "no zoom level for latitude 95" -- zoom level --altitude 1000 --latitude 95 --height 100

# Addresses: the mailing layout of the country, lines after the first indented; absent texts.
expect_line $'formattedAddress: 12 Main St\n  Springfield IL 62701\n  United States' -- address \
  --name Cafe --street "Main St" --number 12 --city Springfield --state IL --postcode 62701 --country US
expect_json '{"formattedAddress": null, "line2Address": null, "addressWithName": "Cafe",
  "streetAddress": ""}' -- --json address --name Cafe

# The catalogs in display order with their codes, in the current locale.
expect_line $'QMCoordinateType\n  2\tMGRS\n  1\tgrad, minuten' -- --locale de_DE coordinates
expect_json '{"catalog": "QMCoordinateType", "code": 0, "name": "Latitude, Longitude"}' -- \
  --json coordinates

finish
