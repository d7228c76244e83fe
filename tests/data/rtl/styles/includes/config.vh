// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

`define CFG_DONE
`define CFG_UART 1
`ifdef FROM_COMMAND_LINE
 `define CFG_W `FROM_COMMAND_LINE
`else
 `define CFG_W 6
`endif
