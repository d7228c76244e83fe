// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

`include "uart_defs.vh"
module uart(input clk); wire [`UART_W-1:0] r; `ifdef CORE_BODY wire leaked; `endif endmodule
