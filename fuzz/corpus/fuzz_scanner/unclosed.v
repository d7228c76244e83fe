module m #(a b (c [{ (* "
/* \x 