// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Asserts the reset at once and releases it in step with the clock.

module reset_sync (
    input  wire clk,
    input  wire rst_n_async,
    output wire rst
);
    reg [2:0] shift;

    always @(posedge clk or negedge rst_n_async)
        if (!rst_n_async)
            shift <= 3'b111;
        else
            shift <= {shift[1:0], 1'b0};

    assign rst = shift[2];
endmodule
