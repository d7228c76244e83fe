// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Plays the beacon's light pattern on its own: each step is one write to a lamp's modulator.

`include "soc_map.vh"

module beacon_sequencer
    import soc_pkg::*;
#(
    parameter int unsigned Lamps = 4,
    parameter int unsigned StepCycles = 1 << 20
) (
    input logic          rst,
    input logic          enable,
    soc_bus_if.initiator bus
);
    localparam int unsigned StepBits = $clog2(StepCycles);

    logic [StepBits-1:0]      pause;
    logic [$clog2(Lamps)-1:0] lamp;
    logic [0:7]               pattern; // Index 0 is the next brightness bit.

    wire step = enable && (pause == 0);

    always_ff @(posedge bus.clk)
        if (rst) begin
            pause   <= '1;
            lamp    <= '0;
            pattern <= 8'b1110_0100;
        end else if (!step) begin
            pause <= pause - 1'b1;
        end else if (bus.ack) begin
            pause   <= '1;
            lamp    <= lamp + 1'b1;
            pattern <= {pattern[1:7], pattern[0]};
        end

    assign bus.req   = step;
    assign bus.we    = 1'b1;
    assign bus.addr  = {`SOC_BLOCK_PWM, 8'(4 * lamp)};
    assign bus.wdata = {24'd0, pattern};
endmodule
