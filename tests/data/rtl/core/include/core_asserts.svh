// Checks that simulators run and synthesis leaves out.
`define ASSERT_KNOWN(name, sig) \
    name: assert property (@(posedge clk_i) disable iff (!rst_ni) !$isunknown(sig)) \
        else $error("unknown");
