# Run as a script (cmake -P): writes OUTPUT, a C++ source that defines
# `extern const char NAME[]`, the bytes of INPUT followed by a NUL. The bytes are written
# as numbers, so that no text of the file can end the literal early.
file(READ ${INPUT} bytes HEX)
string(REGEX REPLACE "(..)" "0x\\1," bytes "${bytes}")
file(WRITE ${OUTPUT} "extern const char ${NAME}[] = {${bytes}0};\n")
