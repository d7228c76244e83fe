// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Passes a level on when it has stood for 2**WIDTH clock cycles.

module debounce #(
    parameter WIDTH = 10
) (
    input  wire clk,
    input  wire rst,
    input  wire raw,
    output reg  clean
);
    reg [WIDTH-1:0] stable_for;

    always @(posedge clk)
        if (rst) begin
            stable_for <= 0;
            clean      <= 1'b0;
        end else if (raw == clean) begin
            stable_for <= 0;
        end else begin
            stable_for <= stable_for + 1'b1;
            if (&stable_for)
                clean <= raw;
        end
endmodule
