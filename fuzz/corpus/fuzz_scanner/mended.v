bind m n o(.p(q)); defparam a[0].b = 1; module \x ; // synthesis translate_off
property p; e’›’Šdule