// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Sends bytes as a start bit, eight data bits from the lowest up, and a stop bit.

module uart_transmitter (
    input  wire       clk,
    input  wire       rst,
    input  wire       tick16,
    input  wire       valid,
    input  wire [7:0] data,
    output wire       ready,
    output wire       line
);
    reg [9:0] shift; // Bit 0 is on the line.
    reg [3:0] bits_left;
    reg [3:0] phase;

    assign ready = (bits_left == 0);
    assign line  = shift[0];

    always @(posedge clk)
        if (rst) begin
            shift     <= 10'h3FF;
            bits_left <= 0;
            phase     <= 0;
        end else if (ready) begin
            phase <= 0;
            if (valid) begin
                shift     <= {1'b1, data, 1'b0};
                bits_left <= 4'd10;
            end
        end else if (tick16) begin
            phase <= phase + 1'b1;
            if (phase == 4'd15) begin
                shift     <= {1'b1, shift[9:1]};
                bits_left <= bits_left - 1'b1;
            end
        end
endmodule
