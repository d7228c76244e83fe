// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Counts up and down between 0 and 2**WIDTH; the fill level of a FIFO.

module level_counter #(
    parameter WIDTH = 4
) (
    input  wire             clk,
    input  wire             rst,
    input  wire             up,
    input  wire             down,
    output reg  [WIDTH:0]   level,
    output wire             empty,
    output wire             full
);
    assign empty = (level == 0);
    assign full  = level[WIDTH];

    always @(posedge clk)
        if (rst)
            level <= 0;
        else if (up && !down)
            level <= level + 1'b1;
        else if (down && !up)
            level <= level - 1'b1;
endmodule
