// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Memory map and identity of the beacon SoC, shared by Verilog and SystemVerilog. An address has
// 16 bits: the upper eight choose the block, the lower eight a register in it.

`ifndef SOC_MAP_VH
`define SOC_MAP_VH

`define SOC_BLOCK_RAM      8'h00
`define SOC_BLOCK_UART     8'h10
`define SOC_BLOCK_GPIO     8'h11
`define SOC_BLOCK_TIMER    8'h12
`define SOC_BLOCK_PWM      8'h13
`define SOC_BLOCK_WATCHDOG 8'h14

// What a read of an unmapped address gives.
`define SOC_BAD_READ       32'hDEAD_ACCE

// Clock cycles a bit of the serial line, divided by the oversampling factor of 16. A build for
// another crystal sets it on the command line.
`ifndef SOC_BAUD_DIVISOR
`define SOC_BAUD_DIVISOR   27
`endif

`endif
