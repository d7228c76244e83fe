// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

`include "sub/core.v"
`include "sub/inc/uart.v"
`include "config.vh"
`ifndef CFG_DONE
module wrong; endmodule
`elsif CFG_UART
module top(input clk, output [`CFG_W-1:0] o);
  core #(.W(`CFG_W)) c(.clk(clk), .o(o));
 `ifdef CFG_UART
  uart u(.clk(clk));
 `else
  wire no_uart;
 `endif
endmodule
`else
module other; endmodule
`endif
