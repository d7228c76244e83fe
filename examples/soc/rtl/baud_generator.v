// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Divides the clock down to 16 times the bit rate of the serial line.

module baud_generator #(
    parameter DIVISOR = 27
) (
    input  wire clk,
    input  wire rst,
    output wire \tick*16
);
    reg [15:0] count;

    assign \tick*16 = (count == 0);

    always @(posedge clk)
        if (rst || count == 0)
            count <= DIVISOR - 1;
        else
            count <= count - 1'b1;
endmodule
