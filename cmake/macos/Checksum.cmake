# Writes FILE.sha256 beside FILE, as `shasum -a 256 -c` reads it.
file(SHA256 ${FILE} sum)
cmake_path(GET FILE FILENAME name)
file(WRITE ${FILE}.sha256 "${sum}  ${name}\n")
message("${sum}  ${FILE}")
