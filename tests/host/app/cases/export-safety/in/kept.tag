an older export
