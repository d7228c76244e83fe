// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// A row of pulse width modulators for the lamps. The channels differ in resolution: each has two
// bits more than the one before.
//
//   04 * n  duty of channel n (write)

module pwm #(
    parameter int unsigned Channels = 4
) (
    input  logic                clk,
    input  logic                rst,
    input  logic                sel,
    input  logic                we,
    input  logic [7:0]          addr,
    input  logic [31:0]         wdata,
    output logic [31:0]         rdata,
    output logic                ack,
    output logic [Channels-1:0] lamp
);
    always_ff @(posedge clk)
        ack <= sel && !ack;

    assign rdata = '0;

    for (genvar n = 0; n < Channels; ++n) begin : g_channel
        wire load = sel && we && !ack && (addr == 8'(4 * n));

        pwm_channel #(
            .WIDTH(8 + 2 * n)
        ) u_channel (
            .clk,
            .rst,
            .load,
            .duty (wdata[7+2*n:0]),
            .pulse(lamp[n])
        );
    end
endmodule
