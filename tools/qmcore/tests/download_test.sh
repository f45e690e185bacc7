#!/usr/bin/env bash
# qmcore md5, sign, get, post and download, the requests against a loopback Python server.
source "$(dirname "$0")/lib.sh" "$@"

# Digests of texts and files, in each form.
printf 'abc' >"$work/abc.txt"
expect_line "kAFQmDzST7DWlj99KOF/cg==" -- md5 abc
expect_line "d41d8cd98f00b204e9800998ecf8427e" -- md5 --hex ''
expect_json '{"md5": "kAFQmDzST7DWlj99KOF_cg"}' -- --json md5 --file "$work/abc.txt" --url
expect_fail 2 "cannot read the file" -- md5 --file "$work/missing"

# Signed URLs: the digest is the URL-friendly MD5 of "<expiry>/zip/<file> <secret>".
expect_line "https://example.org/d/F.zip?md5=NnQMZMxAjiB7XaYFcFDqrQ&expires=1700000000" -- \
  sign F.zip https://example.org/d s3cret --expires 1700000000
expect_fail 2 "--expires is not a number" -- sign F.zip B S --expires soon

# A real server on the loopback address: GET serves the www folder, POST echoes the form.
mkdir -p "$work/www" "$work/out-dir"
printf 'hello\n' >"$work/www/hello.txt"
printf '\xff\xfe' >"$work/www/binary"
python3 -u - "$work/www" >"$work/server.log" 2>&1 <<'PY' &
import functools, http.server, sys
class Handler(http.server.SimpleHTTPRequestHandler):
    def do_POST(self):
        self.send_response(200)
        self.end_headers()
        self.wfile.write(b'posted ' + self.rfile.read(int(self.headers['Content-Length'])))
server = http.server.HTTPServer(('127.0.0.1', 0), functools.partial(Handler, directory=sys.argv[1]))
print('port', server.server_port)
server.serve_forever()
PY
trap 'kill $! 2>/dev/null' EXIT  # the server, the last job started
for _ in $(seq 100); do
  port=$(sed -n 's/^port //p' "$work/server.log")
  [ -n "$port" ] && break
  sleep 0.1
done
base="http://127.0.0.1:$port"
digest=$(python3 -c "import hashlib;print(hashlib.md5(b'hello\n').hexdigest())")

expect_line "hello" -- get "$base/hello.txt"
expect_line "posted a=1&b=2" -- post "$base/form" "a=1&b=2"
expect_line "$work/out-dir/a.txt" -- download "$base/hello.txt" --to "$work/out-dir/a.txt" --md5 "$digest"
check "download wrote other bytes" cmp -s "$work/www/hello.txt" "$work/out-dir/a.txt"

# Failures: exit status 1, the error's domain, code and description.
expect_status 1 "download error 202: md5 checksum for downloaded data '$digest'" -- \
  download "$base/hello.txt" --to "$work/out-dir/b.txt" --md5 "${digest^^}"
expect_status 1 '{"domain":"download","code":204,' -- --json download "http://127.0.0.1:1/x" --to "$work/out-dir/d.txt"
expect_status 1 "download error 204" -- get "http://127.0.0.1:1/x"
expect_status 1 "download error 0: the answer is not UTF-8 text" -- get "$base/binary"
expect_line "" -- post "http://127.0.0.1:1/x" "a=1"

finish
