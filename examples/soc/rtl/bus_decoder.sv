// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Chooses the block that an address belongs to, and brings its answer back. An address that no
// block has is answered here, so that a wild access doesn't hang the bus.

`include "soc_map.vh"

module bus_decoder
    import soc_pkg::*;
(
    input  logic                            rst,
    soc_bus_if.target                       bus,
    output logic [Blocks-1:0]               sel,
    input  logic [Blocks-1:0]               block_ack,
    input  logic [Blocks-1:0][DataBits-1:0] block_rdata
);
    logic unmapped;
    logic unmapped_ack;

    always_comb begin
        sel = '0;
        unmapped = 1'b0;
        case (bus.addr[15:8])
            `SOC_BLOCK_RAM:      sel[0] = bus.req;
            `SOC_BLOCK_UART:     sel[1] = bus.req;
            `SOC_BLOCK_GPIO:     sel[2] = bus.req;
            `SOC_BLOCK_TIMER:    sel[3] = bus.req;
            `SOC_BLOCK_PWM:      sel[4] = bus.req;
            `SOC_BLOCK_WATCHDOG: sel[5] = bus.req;
            default:             unmapped = bus.req;
        endcase
    end

    always_ff @(posedge bus.clk)
        unmapped_ack <= unmapped && !unmapped_ack && !rst;

    always_comb begin
        bus.rdata = `SOC_BAD_READ;
        for (int i = 0; i < Blocks; ++i)
            if (sel[i]) bus.rdata = block_rdata[i];
    end

    assign bus.ack = unmapped_ack || |(sel & block_ack);
endmodule
