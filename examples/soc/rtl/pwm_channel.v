// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// One pulse width modulated output: high for `duty` out of 2**WIDTH cycles.

module pwm_channel #(
    parameter WIDTH = 8
) (
    input  wire             clk,
    input  wire             rst,
    input  wire             load,
    input  wire [WIDTH-1:0] duty,
    output wire             pulse
);
    reg [WIDTH-1:0] count;
    reg [WIDTH-1:0] active;

    assign pulse = (count < active);

    always @(posedge clk)
        if (rst) begin
            count  <= 0;
            active <= 0;
        end else begin
            count <= count + 1'b1;
            if (load)
                active <= duty;
        end
endmodule
