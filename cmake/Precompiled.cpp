// A target that holds precompiled headers needs a source.
