// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// The on-chip bus. One transfer at a time: the initiator holds `req` and everything that goes with
// it until the target answers with one cycle of `ack`.

interface soc_bus_if (
    input logic clk
);
    import soc_pkg::*;

    logic     req;
    logic     we;
    address_t addr;
    word_t    wdata;
    word_t    rdata;
    logic     ack;

    modport initiator(input clk, rdata, ack, output req, we, addr, wdata);
    modport target(input clk, req, we, addr, wdata, output rdata, ack);
endinterface
