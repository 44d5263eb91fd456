// Nothing: a library needs a source, and this one is there for its precompiled headers.
