`ifndef CORE_DEFINES_SVH
`define CORE_DEFINES_SVH
`define XLEN 32
`define REG_BITS(n) $clog2(n)
`define FF(q, d, rst) \
    always_ff @(posedge clk_i or negedge rst_ni) \
        if (!rst_ni) q <= rst; \
        else q <= d;
`include "core_asserts.svh"
`endif
