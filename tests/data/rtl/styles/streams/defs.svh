// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

`ifndef DEFS_SVH
`define DEFS_SVH
typedef logic [15:0] unit_word_t;
`define REG(T, N, RST) T N``_q, N``_d; \
  always_ff @(posedge clk or negedge rst_n) begin : p_``N \
    if (!rst_n) begin N``_q <= RST; end else begin N``_q <= N``_d; end \
  end
`define STR(x) `"x`"
`define CONCAT3(a,b,c) a``_``b``_``c
`define MAX(a,b) ((a) > (b) ? (a) : (b))
`define NESTED(x) `MAX(x, `MAX(3, 4))
`endif
