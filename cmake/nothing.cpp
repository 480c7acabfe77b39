// A target of headers alone needs a source to be built from.
