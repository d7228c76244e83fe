// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// A small memory, one word wide, read in the cycle after the address.

module scratch_ram #(
    parameter ADDRESS_BITS = 8
) (
    input  wire                    clk,
    input  wire                    sel,
    input  wire                    we,
    input  wire [ADDRESS_BITS-1:0] addr,
    input  wire [31:0]             wdata,
    output reg  [31:0]             rdata,
    output reg                     ack
);
    reg [31:0] memory [0:(1 << ADDRESS_BITS)-1];

    always @(posedge clk) begin
        ack <= sel && !ack;
        if (sel && we && !ack)
            memory[addr] <= wdata;
        rdata <= memory[addr];
    end
endmodule
