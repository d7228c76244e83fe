// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Two flip-flops in a row, which bring an outside signal into the clock domain.

module sync2 (
    input  wire clk,
    input  wire async_in,
    output wire sync_out
);
    reg [0:1] stage = 2'b00;

    always @(posedge clk)
        stage <= {async_in, stage[0]};

    assign sync_out = stage[1];
endmodule
