// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// A down counter that reloads itself and raises an interrupt each time that it reaches 0.
//
//   00  reload value      04  present count      08  bit 0: run, bit 1: interrupt (write 1 clears)

module timer #(
    parameter WIDTH = 24
) (
    input  wire        clk,
    input  wire        rst,
    input  wire        sel,
    input  wire        we,
    input  wire [7:0]  addr,
    input  wire [31:0] wdata,
    output reg  [31:0] rdata,
    output reg         ack,
    output wire        irq
);
    reg [WIDTH-1:0] reload;
    reg [WIDTH-1:0] count;
    reg             run;
    reg             expired;

    wire last = run && (count == 0);

    assign irq = expired;

    always @(posedge clk) begin
        ack <= sel && !ack;

        if (rst) begin
            reload  <= {WIDTH{1'b1}};
            count   <= {WIDTH{1'b1}};
            run     <= 1'b0;
            expired <= 1'b0;
        end else begin
            if (last)
                expired <= 1'b1;
            if (run)
                count <= last ? reload : count - 1'b1;

            if (sel && we && !ack)
                case (addr)
                    8'h00: reload <= wdata[WIDTH-1:0];
                    8'h04: count <= wdata[WIDTH-1:0];
                    8'h08: begin
                        run <= wdata[0];
                        if (wdata[1])
                            expired <= 1'b0;
                    end
                    default: ;
                endcase
        end
    end

    always @*
        case (addr)
            8'h00:   rdata = {{32-WIDTH{1'b0}}, reload};
            8'h04:   rdata = {{32-WIDTH{1'b0}}, count};
            8'h08:   rdata = {30'd0, expired, run};
            default: rdata = 32'd0;
        endcase
endmodule
