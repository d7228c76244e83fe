// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

`include "core_defs.vh"
module core #(parameter W = 1) (input clk, output reg [W-1:0] o); `CORE_BODY
`include "inc/body.vh"
endmodule
`undef CORE_BODY
