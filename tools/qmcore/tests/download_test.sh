#!/usr/bin/env bash
# qmcore md5, sign, get, post and download, the requests against a loopback Python server.
source "$(dirname "$0")/lib.sh" "$@"

# Digests of texts and files.
expect_line "1B2M2Y8AsgTpgAmY7PhCfg==" -- md5 ''
expect_line "1B2M2Y8AsgTpgAmY7PhCfg" -- md5 --url ''
expect_line "d41d8cd98f00b204e9800998ecf8427e" -- md5 --hex ''
expect_line "kAFQmDzST7DWlj99KOF/cg==" -- md5 --base64 abc
expect_line "kAFQmDzST7DWlj99KOF_cg" -- md5 --url abc
printf 'abc' >"$work/abc.txt"
expect_line "900150983cd24fb0d6963f7d28e17f72" -- md5 --file "$work/abc.txt"
expect_line "kAFQmDzST7DWlj99KOF/cg==" -- md5 --file "$work/abc.txt" --base64
expect_json '{"md5": "kAFQmDzST7DWlj99KOF/cg=="}' -- --json md5 abc
expect_fail 2 "give either TEXT or --file PATH" -- md5
expect_fail 2 "cannot read the file" -- md5 --file "$work/missing"

# Signed URLs: the digest is the URL-friendly MD5 of "<expiry>/zip/<file> <secret>".
expect_line "https://example.org/d/F.zip?md5=NnQMZMxAjiB7XaYFcFDqrQ&expires=1700000000" -- \
  sign F.zip https://example.org/d s3cret --expires 1700000000
expect_line "https://example.org/d/F.zip?md5=NnQMZMxAjiB7XaYFcFDqrQ&expires=1700000000" -- \
  sign F.zip https://example.org/d s3cret --expires 1699999999.6
expect "https://example.org/d/F.zip?md5=" -- sign F.zip https://example.org/d s3cret
expect_fail 2 "--expires is not a number" -- sign F.zip B S --expires soon

# A real server on the loopback address, serving the script's work folder.
mkdir -p "$work/www" "$work/out-dir"
printf 'hello\n' >"$work/www/hello.txt"
python3 -u -m http.server --bind 127.0.0.1 --directory "$work/www" 0 >"$work/server.log" 2>&1 &
server=$!
trap 'kill $server 2>/dev/null' EXIT
port=""
for _ in $(seq 100); do
  port=$(sed -n 's/.* port \([0-9]*\) .*/\1/p' "$work/server.log" | head -1)
  [ -n "$port" ] && break
  sleep 0.1
done
base="http://127.0.0.1:$port"
digest=$(python3 -c "import hashlib;print(hashlib.md5(b'hello\n').hexdigest())")

expect_line "hello" -- get "$base/hello.txt"
expect_line "$work/out-dir/a.txt" -- download "$base/hello.txt" --to "$work/out-dir/a.txt" --md5 "$digest"
checks=$((checks + 1))
if ! cmp -s "$work/www/hello.txt" "$work/out-dir/a.txt"; then report "download wrote other bytes"; fi

# Failures: exit status 1, the error's domain, code and description; no file left behind.
expect_status_out() {
  local status="$1" text="$2"; shift 3
  checks=$((checks + 1)); run_tool "$@"
  if [ "$(cat "$work/status")" != "$status" ] || ! grep -qF -- "$text" "$work/out"; then
    report "$@"; echo "--- expected exit $status and stdout containing: $text"
  fi
}
upper=$(echo "$digest" | tr a-f A-F)
expect_status_out 1 "download error 202: md5 checksum for downloaded data '$digest' is different from expected checksum of '$upper'" -- \
  download "$base/hello.txt" --to "$work/out-dir/b.txt" --md5 "$upper"
expect_status_out 1 "download error 205: Server at the provided url ('$base/missing') returned error code: 404" -- \
  download "$base/missing" --to "$work/out-dir/c.txt"
expect_status_out 1 "download error 204" -- download "http://127.0.0.1:1/x" --to "$work/out-dir/d.txt"
expect_status_out 1 '"code":202' -- --json download "$base/hello.txt" --to "$work/out-dir/e.txt" --md5 0
checks=$((checks + 1))
if [ "$(ls "$work/out-dir")" != "a.txt" ]; then report "failed downloads left files: $(ls "$work/out-dir")"; fi
expect_status_out 1 "download error 204" -- get "http://127.0.0.1:1/x"
expect_line "" -- post "http://127.0.0.1:1/x" "a=1"

finish
